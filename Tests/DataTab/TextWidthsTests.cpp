#include "DataTab/TextWidths.h"

#include <QApplication>
#include <QFontMetricsF>
#include <gtest/gtest.h>
#include <string>

namespace quorvel {
namespace {

TEST(TextWidths, isEnoughForWhatIsDrawn) {
    const QFont font = QApplication::font();
    TextWidths widths(font);
    for (const std::string text :
         {"", "Pear", "AVAVA To. fi", "Gain 2 {icon:coin}. **Draw** a card.", "ÄÖÜ é ñ", "1,234.50"}) {
        const double drawn = QFontMetricsF(font).horizontalAdvance(QString::fromStdString(text));
        EXPECT_GE(widths.width(text, 10'000) + 0.5, drawn) << text;
        EXPECT_LE(widths.width(text, 10'000), drawn * 1.15 + 1) << text;
    }
}

TEST(TextWidths, stopsBeyondTheLimit) {
    TextWidths widths(QApplication::font());
    const double cut = widths.width(std::string(10'000'000, 'm'), 260);
    EXPECT_GT(cut, 260);
    EXPECT_LT(cut, 300);
}

TEST(TextWidths, takesAnyBytesAndScripts) {
    TextWidths widths(QApplication::font());
    for (const std::string text : {"\xff\xfe\x80", "漢字かな", "😀👩‍🌾", "שלום", "नमस्ते", "𠮷", "\n\t\x7f"})
        EXPECT_GT(widths.width(text, 10'000), 0) << text;
    EXPECT_EQ(widths.width("\u200D\uFE0F", 10), 0);
}

}  // namespace
}  // namespace quorvel
