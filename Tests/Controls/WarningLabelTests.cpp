#include "Controls/Style.h"
#include "Controls/WarningLabel.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QLabel>

namespace quorvel {
namespace {

class WarningLabelTest : public WindowTest {
protected:
    ~WarningLabelTest() override { Style::apply(*qApp, Style::Appearance::light); }
};

}  // namespace

TEST_F(WarningLabelTest, IsInTheColourOfWarningsInLightAndDark) {
    WarningLabel warning("<b>Too</b> big");
    const auto* label = warning.findChild<QLabel*>();
    EXPECT_EQ(label->text(), "<b>Too</b> big");
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    for (const auto appearance : {Style::Appearance::light, Style::Appearance::dark, Style::Appearance::light}) {
        Style::apply(*qApp, appearance);
        settle();
        EXPECT_EQ(label->palette().color(QPalette::WindowText), Style::warning(warning.palette()));
    }
}

}  // namespace quorvel
