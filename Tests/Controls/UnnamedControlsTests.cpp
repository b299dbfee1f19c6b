#include "Support/Widgets/WindowTest.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class UnnamedControlsTest : public WindowTest {
protected:
    QWidget window;
    QHBoxLayout line{&window};
};

TEST_F(UnnamedControlsTest, takesATextALabelOrANameForOne) {
    line.addWidget(new QPushButton(QStringLiteral("Reload")));
    auto* field = new QLineEdit;
    auto* label = new QLabel(QStringLiteral("Name"));
    label->setBuddy(field);
    line.addWidget(label);
    line.addWidget(field);
    auto* button = new QToolButton;
    button->setAccessibleName(QStringLiteral("Add Deck"));
    line.addWidget(button);
    show(window);
    EXPECT_THAT(unnamedControls(window), IsEmpty());
}

TEST_F(UnnamedControlsTest, findsWhatHasNone) {
    line.addWidget(new QLineEdit);
    line.addWidget(new QToolButton);
    line.addWidget(new QComboBox);
    show(window);
    EXPECT_THAT(unnamedControls(window),
                ElementsAre(HasSubstr("QLineEdit"), HasSubstr("QToolButton"), HasSubstr("QComboBox")));
}

TEST_F(UnnamedControlsTest, findsWhatIsHiddenOrDisabled) {
    auto* hidden = new QToolButton;
    auto* disabled = new QToolButton;
    line.addWidget(hidden);
    line.addWidget(disabled);
    hidden->hide();
    disabled->setEnabled(false);
    show(window);
    EXPECT_EQ(unnamedControls(window).size(), 2U);
}

TEST_F(UnnamedControlsTest, looksIntoTheItemsOfAView) {
    auto* list = new QListWidget;
    list->setAccessibleName(QStringLiteral("Decks"));
    list->addItem(QStringLiteral("A deck"));
    list->addItem(QString());
    line.addWidget(list);
    show(window);
    EXPECT_THAT(unnamedControls(window), ElementsAre(AllOf(HasSubstr("Decks"), HasSubstr("item"))));
}

TEST_F(UnnamedControlsTest, anEmptyCellIsNoControlWithoutAName) {
    auto* table = new QTableWidget(2, 2);
    table->setAccessibleName(QStringLiteral("Rows"));
    line.addWidget(table);
    show(window);
    EXPECT_THAT(unnamedControls(window), IsEmpty());
}

TEST_F(UnnamedControlsTest, findsNothingInNothing) {
    show(window);
    EXPECT_THAT(unnamedControls(window), IsEmpty());
    EXPECT_THAT(unnamedControls(QWidget()), IsEmpty());
}

}  // namespace
}  // namespace quorvel
