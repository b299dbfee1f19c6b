#include "Controls/LinkButton.h"
#include "Support/Widgets/WindowTest.h"

#include <QSignalSpy>
#include <QTest>

namespace quorvel {
namespace {

class LinkButtonTest : public WindowTest {
protected:
    LinkButton button{"Choose Art Folder…"};
    QSignalSpy clicked{&button, &QAbstractButton::clicked};

    LinkButtonTest() {
        show(button, button.sizeHint());
        button.activateWindow();
        button.setFocus();
    }
};

}  // namespace

TEST_F(LinkButtonTest, AnswersMouseSpaceAndReturn) {
    QTest::mouseClick(&button, Qt::LeftButton);
    int count = 1;
    EXPECT_EQ(clicked.count(), count);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&button, key);
        EXPECT_EQ(clicked.count(), ++count) << key;
    }
    QTest::keyClick(&button, Qt::Key_A);
    EXPECT_EQ(clicked.count(), count);
}

TEST_F(LinkButtonTest, ShowsThatItHasTheKeyboard) {
    const QImage focused = button.grab().toImage();
    button.clearFocus();
    EXPECT_NE(button.grab().toImage(), focused);
    EXPECT_EQ(nameOf(button), "Choose Art Folder…");
}

}  // namespace quorvel
