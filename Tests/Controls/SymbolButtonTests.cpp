#include "Controls/SymbolButton.h"
#include "Support/Widgets/WindowTest.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace quorvel {
namespace {

class SymbolButtonTest : public WindowTest {};

}  // namespace

TEST_F(SymbolButtonTest, IsNamedAndSaysSoUnderThePointer) {
    const SymbolButton button(u"plus", "Add Deck", 20);
    EXPECT_EQ(nameOf(button), "Add Deck");
    EXPECT_EQ(button.toolTip(), "Add Deck");
    EXPECT_EQ(button.iconSize(), QSize(20, 20));
    EXPECT_FALSE(button.icon().isNull());
}

TEST_F(SymbolButtonTest, AClickLeavesTheKeyboardAndTabComesToIt) {
    QWidget window;
    auto* field = new QLineEdit;
    auto* button = new SymbolButton(u"plus", "Add");
    auto* column = new QVBoxLayout(&window);
    column->addWidget(field);
    column->addWidget(button);
    show(window, {200, 100});
    window.activateWindow();
    field->setFocus();
    const QSignalSpy clicked(button, &QToolButton::clicked);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_TRUE(button->hasFocus());
}

}  // namespace quorvel
