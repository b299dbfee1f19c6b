#include "Controls/ElidedLabel.h"
#include "Support/Widgets/WindowTest.h"

#include <QImage>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace quorvel {
namespace {

class ElidedLabelTest : public WindowTest {};

/// What is read of a tooltip, which the toolkit takes for rich text when it looks like it.
QString seen(const QString& toolTip) {
    if (!Qt::mightBeRichText(toolTip)) return toolTip;
    return QTextDocumentFragment::fromHtml(toolTip).toPlainText();
}

const QString name = QStringLiteral("a very long name of a spreadsheet.csv");

TEST_F(ElidedLabelTest, wantsRoomForAllButNeedsNext) {
    ElidedLabel label(Qt::ElideMiddle);
    label.setText(name);
    EXPECT_GE(label.sizeHint().width(), label.fontMetrics().horizontalAdvance(name));
    EXPECT_LT(label.minimumSizeHint().width(), 30);
}

TEST_F(ElidedLabelTest, tellsTheWholeOnlyWhenItIsCut) {
    ElidedLabel label(Qt::ElideMiddle);
    label.setText(name);
    show(label, label.sizeHint());
    EXPECT_EQ(label.toolTip(), QString());
    label.resize(60, label.height());
    EXPECT_EQ(seen(label.toolTip()), name);
    label.setText(QStringLiteral("a"));
    EXPECT_EQ(label.toolTip(), QString());
}

TEST_F(ElidedLabelTest, theTooltipIsNoMarkup) {
    ElidedLabel label(Qt::ElideRight);
    show(label, {60, 20});
    for (const char* words :
         {"<b>cards</b> & more", "salt & pepper for all", "&lt;b&gt; is no tag", "1 < 2 and so on"}) {
        label.setText(words);
        EXPECT_EQ(seen(label.toolTip()), words);
    }
}

TEST_F(ElidedLabelTest, aLongTooltipHasLines) {
    ElidedLabel label(Qt::ElideRight);
    show(label, {60, 20});
    for (const QString& words : {QString(500, u'W'), QStringLiteral("word ").repeated(100).trimmed()}) {
        label.setText(words);
        EXPECT_TRUE(Qt::mightBeRichText(label.toolTip())) << "others stay one line";
        EXPECT_EQ(seen(label.toolTip()).remove(QChar(0x200B)), words);
        QTextDocument lines;
        lines.setHtml(label.toolTip());
        lines.setTextWidth(600);
        EXPECT_LE(lines.idealWidth(), 600);
    }
}

TEST_F(ElidedLabelTest, isReadAsItsWholeText) {
    ElidedLabel label(Qt::ElideMiddle);
    label.setText(name);
    EXPECT_EQ(nameOf(label), name);
}

TEST_F(ElidedLabelTest, staysOneLine) {
    ElidedLabel label(Qt::ElideRight);
    label.setText(QStringLiteral("one\ntwo"));
    EXPECT_EQ(label.text(), QStringLiteral("one two"));
}

TEST_F(ElidedLabelTest, isDrawnInItsColour) {
    ElidedLabel label(Qt::ElideRight);
    label.setText(QStringLiteral("MMMM"));
    label.setColor(Qt::red);
    show(label, {80, 24});
    const auto hasRed = [&] {
        const QImage image = label.grab().toImage();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (const QColor pixel = image.pixelColor(x, y); pixel.red() > 200 && pixel.green() < 60) return true;
        return false;
    };
    EXPECT_TRUE(hasRed());
    label.setColor({});
    EXPECT_FALSE(hasRed());
}

}  // namespace
}  // namespace quorvel
