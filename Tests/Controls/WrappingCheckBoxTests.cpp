#include "Controls/WrappingCheckBox.h"
#include "Support/Widgets/WindowTest.h"

#include <QTest>

namespace quorvel {
namespace {

class WrappingCheckBoxTest : public WindowTest {
protected:
    WrappingCheckBox box{"Double-sided: a back page after each front"};
};

}  // namespace

TEST_F(WrappingCheckBoxTest, TakesAnotherLineWhereItIsNarrow) {
    const int whole = box.sizeHint().width();
    EXPECT_EQ(box.heightForWidth(whole), box.sizeHint().height());
    EXPECT_GT(box.heightForWidth(whole / 2), box.sizeHint().height());
    EXPECT_GE(box.heightForWidth(whole / 4), box.heightForWidth(whole / 2));
    EXPECT_LT(box.minimumSizeHint().width(), whole / 2);
    EXPECT_GT(box.heightForWidth(0), 0);
}

TEST_F(WrappingCheckBoxTest, IsCheckedByMouseAndSpaceAtAnyWidth) {
    for (const int width : {box.sizeHint().width(), box.sizeHint().width() / 2}) {
        show(box, {width, box.heightForWidth(width)});
        EXPECT_FALSE(box.grab().isNull());
        const bool before = box.isChecked();
        QTest::mouseClick(&box, Qt::LeftButton, {}, {8, box.height() / 2});
        EXPECT_NE(box.isChecked(), before) << width;
        QTest::keyClick(&box, Qt::Key_Space);
        EXPECT_EQ(box.isChecked(), before) << width;
    }
}

}  // namespace quorvel
