#include "Inspector/FieldLabel.h"

#include <gtest/gtest.h>

namespace quorvel {

TEST(FieldLabel, IsOnOneLineAndNotTooLong) {
    EXPECT_EQ(FieldLabel::inPicker("a\nb\tc&"), "a b c&");
    EXPECT_EQ(FieldLabel::inMenu("a & b"), "a && b");
    EXPECT_EQ(FieldLabel::inPicker(std::string(60, 'x')), QString(60, 'x'));
    EXPECT_EQ(FieldLabel::inPicker(std::string(61, 'x')), QString(59, 'x') + u'…');
}

}  // namespace quorvel
