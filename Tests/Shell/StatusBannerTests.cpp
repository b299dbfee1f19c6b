#include "Controls/Spinner.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Shell/DeckDetail.h"
#include "Shell/ShellTest.h"
#include "Shell/StatusBanner.h"

#include <QAccessible>
#include <QProgressBar>
#include <QPushButton>
#include <QVariantAnimation>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using std::chrono::milliseconds;

class StatusBannerTest : public ShellTest {
protected:
    StatusBanner& banner = *window.findChild<StatusBanner*>();
    QVariantAnimation& fade = *banner.findChild<QVariantAnimation*>();

    QString said() const { return banner.isVisible() ? banner.accessibleName() : QString(); }

    /// An export that waits for its turn in the background.
    void beginExport(ExportKind kind = ExportKind::sheets) {
        desktop.answers = {desktop.folder / (kind == ExportKind::sheets ? "out.pdf" : "out")};
        model.export_(kind);
    }

    /// A notice, from an export that has ended.
    void makeNotice() {
        beginExport();
        scheduler.settle();
    }
};

TEST_F(StatusBannerTest, WithNothingToSayThereIsNone) {
    EXPECT_FALSE(banner.isVisible());
    EXPECT_EQ(banner.opacity(), 0);
}

TEST_F(StatusBannerTest, AnExportThatRunsIsSaidWithASpinnerAndItsProgress) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    beginExport();
    EXPECT_EQ(said(), text(*model.state()._busy));
    EXPECT_TRUE(banner.findChild<Spinner*>()->isVisible());
    EXPECT_FALSE(banner.findChild<SymbolLabel*>()->isVisible());
    auto& progress = *banner.findChild<QProgressBar*>();
    EXPECT_TRUE(progress.isVisible());
    EXPECT_EQ(progress.value(), 0);

    std::vector<int> values;
    const auto watching = model.subscribe([&](Changes changes) {
        if (changes.has(Change::exports) && !model.exports().empty()) values.push_back(progress.value());
    });
    scheduler.settle();
    EXPECT_THAT(values, testing::Not(testing::IsEmpty()));
    EXPECT_TRUE(std::ranges::is_sorted(values));
    EXPECT_FALSE(progress.isVisible());
}

TEST_F(StatusBannerTest, ANoticeIsSaidWithACheckMarkForFourSeconds) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    makeNotice();
    ASSERT_TRUE(model.state()._notice);
    EXPECT_EQ(said(), text(*model.state()._notice));
    EXPECT_FALSE(banner.findChild<Spinner*>()->isVisible());
    EXPECT_TRUE(banner.findChild<SymbolLabel*>()->isVisible());
    scheduler.advance(milliseconds(3999));
    EXPECT_TRUE(banner.isVisible());
    scheduler.advance(milliseconds(1));
    EXPECT_FALSE(banner.isVisible());
    EXPECT_EQ(banner.opacity(), 0);
}

TEST_F(StatusBannerTest, WhatRunsComesBeforeANotice) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    makeNotice();
    beginExport(ExportKind::images);
    EXPECT_EQ(said(), text(*model.state()._busy));
}

TEST_F(StatusBannerTest, WithLessMotionItIsThereAtOnce) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    beginExport();
    EXPECT_EQ(banner.opacity(), 1);
    EXPECT_EQ(fade.state(), QAbstractAnimation::Stopped);
}

TEST_F(StatusBannerTest, OtherwiseItComesAndGoesInAFifthOfASecond) {
    Style::setReduceMotion(false);
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    fade.setCurrentTime(200);
    ASSERT_EQ(banner.opacity(), 0);

    beginExport();
    EXPECT_EQ(fade.duration(), 200);
    EXPECT_EQ(fade.easingCurve().type(), QEasingCurve::InOutQuad);
    EXPECT_EQ(banner.opacity(), 0);
    EXPECT_TRUE(banner.isVisible());
    fade.setCurrentTime(100);
    EXPECT_DOUBLE_EQ(banner.opacity(), 0.5);
    EXPECT_FALSE(window.grab().isNull());
    fade.setCurrentTime(200);
    EXPECT_EQ(banner.opacity(), 1);

    // From one text to the other the surface stays.
    scheduler.settle();
    ASSERT_EQ(said(), text(*model.state()._notice));
    fade.setCurrentTime(100);
    EXPECT_EQ(banner.opacity(), 1);
    EXPECT_FALSE(window.grab().isNull());
    fade.setCurrentTime(200);

    scheduler.advance(AppModel::noticeTime);
    EXPECT_TRUE(banner.isVisible());
    fade.setCurrentTime(100);
    EXPECT_DOUBLE_EQ(banner.opacity(), 0.5);
    fade.setCurrentTime(200);
    EXPECT_FALSE(banner.isVisible());
}

TEST_F(StatusBannerTest, AFadeThatIsOvertakenGoesOnFromWhereItWas) {
    Style::setReduceMotion(false);
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    fade.setCurrentTime(200);
    beginExport();
    fade.setCurrentTime(100);
    scheduler.settle();
    EXPECT_DOUBLE_EQ(banner.opacity(), 0.5);
    fade.setCurrentTime(200);
    EXPECT_EQ(banner.opacity(), 1);
}

TEST_F(StatusBannerTest, ItLiesFourteenPointsAboveTheEdgeInTheMiddle) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    beginExport();
    const auto& around = *window.findChild<DeckDetail*>();
    const int shadow = 6;
    for (const QSize size : {QSize(1280, 820), QSize(900, 600)}) {
        show(window, size);
        EXPECT_EQ(around.height() - banner.geometry().bottom() - 1 + shadow, StatusBanner::distance);
        EXPECT_NEAR(banner.geometry().center().x(), around.width() / 2, 1);
    }
}

TEST_F(StatusBannerTest, ALongNoticeStaysInsideTheWindow) {
    show(window, {900, 600});
    const auto file = write(std::string(200, 'w') + ".csv", threeCards);
    model.useSpreadsheet(file);
    settle();
    write(file.filename().string(), "Name\nOther\n");
    settle();
    settle();
    ASSERT_TRUE(model.state()._notice);
    EXPECT_GE(banner.geometry().left(), 0);
    EXPECT_LE(banner.geometry().right(), banner.parentWidget()->width());
}

TEST_F(StatusBannerTest, ItTakesNoClicks) {
    open("cards.csv", threeCards);
    beginExport();
    const QPoint middle = banner.mapTo(&window, banner.rect().center());
    QWidget* below = window.childAt(middle);
    ASSERT_NE(below, nullptr);
    EXPECT_FALSE(below == &banner || banner.isAncestorOf(below));
    EXPECT_EQ(banner.focusPolicy(), Qt::NoFocus);
}

TEST_F(StatusBannerTest, ScreenReadersFindItsWords) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    beginExport();
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&banner);
    EXPECT_EQ(accessible->role(), QAccessible::AlertMessage);
    EXPECT_EQ(accessible->text(QAccessible::Name), text(*model.state()._busy));
    scheduler.settle();
    EXPECT_EQ(accessible->text(QAccessible::Name), text(*model.state()._notice));
}

TEST_F(StatusBannerTest, TheWindowsTitleTellsTheProgress) {
    open("cards.csv", threeCards);
    settle(AppModel::noticeTime);
    const QString name = text(model.currentProject()->name);
    EXPECT_EQ(window.windowTitle(), name);
    beginExport();
    EXPECT_EQ(window.windowTitle(), name + " – " + text(*model.state()._busy) + " 0 %");
    scheduler.settle();
    EXPECT_EQ(window.windowTitle(), name);
}

}  // namespace
}  // namespace quorvel
