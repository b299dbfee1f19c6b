#include "Controls/BusyButton.h"
#include "Controls/Spinner.h"
#include "Controls/Style.h"
#include "Support/Widgets/WindowTest.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

class BusyButtonTest : public testing::Test {
protected:
    BusyButtonTest() {
        Style::setReduceMotion(true);
        button.resize(button.sizeHint());
        button.show();
    }
    ~BusyButtonTest() override { Style::setReduceMotion({}); }

    BusyButton button{"Open"};
    Spinner& spinner = *button.findChild<Spinner*>();
    QSignalSpy clicked{&button, &QPushButton::clicked};
};

TEST_F(BusyButtonTest, ItIsAButton) {
    EXPECT_FALSE(button.isBusy());
    EXPECT_FALSE(spinner.isVisible());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(BusyButtonTest, WhileItIsBusyItCanNotBePressed) {
    const QSize size = button.sizeHint();
    const QImage idle = button.grab().toImage();
    button.setBusy(true);
    EXPECT_TRUE(spinner.isVisible());
    EXPECT_EQ(spinner.geometry().center(), button.rect().center());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_EQ(button.sizeHint(), size);
    EXPECT_EQ(button.text(), "Open");
    EXPECT_EQ(unnamedControls(button), std::vector<std::string>());
    button.setBusy(false);
    EXPECT_FALSE(spinner.isVisible());
    EXPECT_EQ(button.grab().toImage(), idle);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(BusyButtonTest, TheSpinnerStandsInThePlaceOfTheWords) {
    button.setBusy(true);
    spinner.hide();
    const QImage image = button.grab().toImage();
    const QRgb ground = image.pixel(image.width() / 2, 4);
    for (int x = 6; x < image.width() - 6; ++x) EXPECT_EQ(image.pixel(x, image.height() / 2), ground) << x;
}

}  // namespace
}  // namespace quorvel
