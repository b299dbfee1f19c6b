#include "Controls/CodeSpans.h"

#include <QLabel>
#include <QTextDocument>
#include <gtest/gtest.h>

namespace quorvel {

TEST(CodeSpans, AreShownInTheLettersOfATypewriter) {
    QLabel label;
    CodeSpans::show("`{{art}}` & <b>: `**bold**`.", label);
    EXPECT_EQ(label.textFormat(), Qt::RichText);
    EXPECT_EQ(label.accessibleName(), "{{art}} & <b>: **bold**.");
    QTextDocument shown;
    shown.setHtml(label.text());
    EXPECT_EQ(shown.toPlainText(), "{{art}} & <b>: **bold**.");
}

TEST(CodeSpans, LeaveOtherSentencesAsTheyAre) {
    QLabel label;
    CodeSpans::show("`{{art}}`", label);
    CodeSpans::show("5 < 6 & <b>", label);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.text(), "5 < 6 & <b>");
    EXPECT_EQ(label.accessibleName(), "");
}

}  // namespace quorvel
