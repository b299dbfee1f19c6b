#include "Controls/EmptyState.h"
#include "Support/Widgets/WindowTest.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace quorvel {
namespace {

class EmptyStateTest : public WindowTest {
protected:
    EmptyState state{QStringLiteral("rectangle.portrait.slash"), QStringLiteral("No cards yet")};
};

TEST_F(EmptyStateTest, hasATitleOnly) {
    show(state);
    EXPECT_TRUE(find<QLabel>(state, QStringLiteral("No cards yet"))->isVisible());
    EXPECT_FALSE(state.findChild<QPushButton*>()->isVisible());
    EXPECT_TRUE(unnamedControls(state).empty());
}

TEST_F(EmptyStateTest, showsTheWholeDescription) {
    state.setDescription(
        QStringLiteral("The spreadsheet has headers but no rows. Add a row for each card and save: "
                       "the preview updates by itself, which takes more than one line to tell."));
    show(state, {600, 500});
    const auto* description = find<QLabel>(state, state.findChildren<QLabel*>().last()->text());
    EXPECT_TRUE(description->isVisible());
    EXPECT_GE(description->height(), description->heightForWidth(description->width()));
    EXPECT_GT(description->height(), 2 * description->fontMetrics().height());
    state.setDescription({});
    EXPECT_FALSE(description->isVisible());
}

TEST_F(EmptyStateTest, theDescriptionIsNoMarkup) {
    state.setDescription(QStringLiteral("<b>bad</b>"));
    EXPECT_EQ(state.findChildren<QLabel*>().last()->textFormat(), Qt::PlainText);
}

TEST_F(EmptyStateTest, saysWhatToDo) {
    int count = 0;
    QObject::connect(&state, &EmptyState::activated, [&] { ++count; });
    state.setAction(QStringLiteral("Choose Spreadsheet…"));
    show(state);
    auto* button = find<QPushButton>(state, QStringLiteral("Choose Spreadsheet…"));
    QTest::mouseClick(button, Qt::LeftButton);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(count, 2);
    state.setAction({});
    EXPECT_FALSE(button->isVisible());
}

TEST_F(EmptyStateTest, isCentred) {
    show(state, {800, 600});
    const auto* title = state.findChild<QLabel*>();
    const QRect place(title->mapTo(&state, QPoint(0, 0)), title->size());
    EXPECT_NEAR(place.center().x(), 400, 1);
    EXPECT_GT(place.top(), 150);
    EXPECT_LT(place.bottom(), 400);
}

}  // namespace
}  // namespace quorvel
