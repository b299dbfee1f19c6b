#include "Controls/Style.h"
#include "Support/Desktop/EventLoop.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyleOptionButton>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using Style::Appearance;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// As the accessibility guidelines of the web define it: 1 to 21.
double contrast(const QColor& a, const QColor& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

QColor over(const QColor& color, const QColor& ground) {
    const auto mixed = [&](float top, float bottom) { return top * color.alphaF() + bottom * (1 - color.alphaF()); };
    return QColor::fromRgbF(mixed(color.redF(), ground.redF()), mixed(color.greenF(), ground.greenF()),
                            mixed(color.blueF(), ground.blueF()));
}

class LookOf : public testing::TestWithParam<Appearance> {
protected:
    LookOf() { Style::apply(*qApp, GetParam()); }
    ~LookOf() override { Style::apply(*qApp, Appearance::light); }

    QColor role(QPalette::ColorRole role) const { return QApplication::palette().color(role); }
};

INSTANTIATE_TEST_SUITE_P(Style, LookOf, testing::Values(Appearance::light, Appearance::dark));

constexpr double readable = 4.5;
constexpr double seen = 3;

TEST_P(LookOf, showsTheKeyboardOnEveryKindOfButton) {
    QWidget window;
    QPushButton plain("Plain", &window);
    QPushButton main("Main", &window);
    main.setDefault(true);
    for (QPushButton* button : {&plain, &main}) {
        button->resize(button->sizeHint());
        const auto paint = [&](QStyle::State state) {
            QImage image(button->size(), QImage::Format_ARGB32_Premultiplied);
            image.fill(role(QPalette::Window));
            QPainter painter(&image);
            QStyleOptionButton option;
            option.initFrom(button);
            option.state |= state;
            option.text = button->text();
            if (button->isDefault()) option.features |= QStyleOptionButton::DefaultButton;
            QApplication::style()->drawControl(QStyle::CE_PushButton, &option, &painter, button);
            return image;
        };
        const QImage without = paint(QStyle::State_Enabled);
        const QImage with = paint(QStyle::State_Enabled | QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange);
        const QPoint edge(button->width() / 2, 1);
        // Against what is outside of it, or inside.
        const QColor ring = with.pixelColor(edge);
        EXPECT_GE(
            std::max(contrast(ring, role(QPalette::Window)), contrast(ring, without.pixelColor(edge + QPoint(0, 3)))),
            seen)
            << button->text().toStdString();
        EXPECT_EQ(paint(QStyle::State_Enabled | QStyle::State_HasFocus), without) << "not after a click";
    }
}

TEST_P(LookOf, isAsTold) {
    EXPECT_EQ(Style::isDark(QApplication::palette()), GetParam() == Appearance::dark);
}

TEST_P(LookOf, keepsTextReadableOnEveryGround) {
    const QPalette palette = QApplication::palette();
    const QColor window = role(QPalette::Window);
    // Placeholders and banners are the secondary colour at up to 12 percent.
    const std::pair<const char*, QColor> grounds[] = {
        {"window", window},
        {"base", role(QPalette::Base)},
        {"alternate", role(QPalette::AlternateBase)},
        {"button", role(QPalette::Button)},
        {"surface", Style::surface(palette)},
        {"panel", over(Style::panel(palette, 0.12), window)},
        {"under the page", Style::underPage(palette)},
    };
    const std::pair<const char*, QColor> inks[] = {
        {"text", role(QPalette::Text)},
        {"window text", role(QPalette::WindowText)},
        {"button text", role(QPalette::ButtonText)},
        {"placeholder", role(QPalette::PlaceholderText)},
        {"secondary", Style::secondary(palette)},
        {"warning", Style::warning(palette)},
        {"good", Style::good(palette)},
        {"link", role(QPalette::Link)},
        {"visited link", role(QPalette::LinkVisited)},
    };
    for (const auto& [groundName, ground] : grounds)
        for (const auto& [inkName, ink] : inks)
            EXPECT_GE(contrast(ink, ground), readable) << inkName << " on " << groundName;
}

TEST_P(LookOf, keepsTextReadableOnTheAccentAndInTips) {
    EXPECT_GE(contrast(role(QPalette::HighlightedText), role(QPalette::Highlight)), readable);
    EXPECT_GE(contrast(Qt::white, Style::accent(QApplication::palette())), readable);
    EXPECT_GE(contrast(role(QPalette::ToolTipText), role(QPalette::ToolTipBase)), readable);
}

TEST_P(LookOf, showsTheAccentOnTheWindow) {
    for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base})
        EXPECT_GE(contrast(Style::accent(QApplication::palette()), role(ground)), seen);
}

TEST_P(LookOf, isKeptWhenThePlatformChangesItsOwn) {
    const QColor before = role(QPalette::Window);
    QPalette other;
    other.setColor(QPalette::Window, Qt::magenta);
    QApplication::setPalette(other);
    runWhatWaits();
    EXPECT_EQ(role(QPalette::Window), before);
}

TEST_P(LookOf, secondaryTextFollowsIt) {
    QLabel label;
    QPushButton button;
    Style::makeSecondary(&label);
    Style::makeSecondary(&button);
    const Appearance other = GetParam() == Appearance::dark ? Appearance::light : Appearance::dark;
    for (const Appearance appearance : {GetParam(), other, GetParam()}) {
        Style::apply(*qApp, appearance);
        runWhatWaits();
        const QColor wanted = Style::secondary(QApplication::palette());
        EXPECT_EQ(label.palette().color(QPalette::WindowText), wanted);
        EXPECT_EQ(button.palette().color(QPalette::ButtonText), wanted);
        EXPECT_NE(label.palette().color(QPalette::Disabled, QPalette::WindowText), wanted);
    }
}

TEST(Style, judgesThePlatformsPaletteAndNotItsOwn) {
    // The platform without a screen is light.
    Style::apply(*qApp, Appearance::dark);
    Style::apply(*qApp, Appearance::system);
    EXPECT_FALSE(Style::isDark(QApplication::palette()));
    Style::apply(*qApp, Appearance::light);
    const QPalette light = QApplication::palette();
    Style::apply(*qApp, Appearance::system);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), light.color(QPalette::Window)) << "in our own colours";
}

TEST(Style, theSystemsLookOutlivesAChangeOfThePlatform) {
    Style::apply(*qApp, Appearance::system);
    const QPalette before = QApplication::palette();
    QEvent change(QEvent::ApplicationPaletteChange);
    QApplication::sendEvent(qApp, &change);
    EXPECT_EQ(QApplication::palette(), before);
    Style::apply(*qApp, Appearance::light);
}

TEST(Style, panelIsTheSecondaryColourThatThin) {
    const QPalette palette = QApplication::palette();
    QColor expected = Style::secondary(palette);
    expected.setAlphaF(0.08F);
    EXPECT_EQ(Style::panel(palette, 0.08), expected);
}

TEST(Style, sizesOfTypeGrow) {
    using enum Style::TextSize;
    double before = 0;
    for (const Style::TextSize size : {caption, callout, body, title3, title1}) {
        const double height = QFontInfo(Style::font(size)).pointSizeF();
        EXPECT_GT(height, before);
        before = height;
    }
    EXPECT_DOUBLE_EQ(Style::font(body).pointSizeF(), QApplication::font().pointSizeF());
    EXPECT_EQ(Style::font(title1, QFont::DemiBold).weight(), QFont::DemiBold);
}

TEST(Style, sizesOfTypeFollowTheUsers) {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(20);
    QApplication::setFont(large);
    EXPECT_DOUBLE_EQ(Style::font(Style::TextSize::body).pointSizeF(), 20);
    EXPECT_DOUBLE_EQ(Style::font(Style::TextSize::title1).pointSizeF(), 40);
    large.setPixelSize(30);
    QApplication::setFont(large);
    EXPECT_EQ(Style::font(Style::TextSize::title1).pixelSize(), 60);
    QApplication::setFont(before);
}

void writeSettings(const QString& name, const QByteArray& text) {
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

void removeSettings(const QString& name) {
    QFile::remove(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name);
}

TEST(Style, readsFromTheDesktopWhetherToMove) {
    Style::setReduceMotion(std::nullopt);
    struct Case {
        const char* file;
        const char* text;
        bool reduced;
    };
    const Case cases[] = {
        {"gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n", true},
        {"gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=false\n", true},
        {"gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=true\n", false},
        {"gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations = 0\n", true},
        {"gtk-4.0/settings.ini", "[Other]\ngtk-enable-animations=0\n", false},
        {"gtk-4.0/settings.ini", "\x00\xff rubbish", false},
        {"kdeglobals", "[KDE]\nAnimationDurationFactor=0\n", true},
        {"kdeglobals", "[KDE]\nAnimationDurationFactor=0.5\n", false},
        {"kdeglobals", "[KDE]\nAnimationDurationFactor=fast\n", false},
    };
    for (const Case& each : cases) {
        writeSettings(QString::fromLatin1(each.file), each.text);
        EXPECT_EQ(Style::reduceMotion(), each.reduced) << each.file << ": " << each.text;
        removeSettings(QString::fromLatin1(each.file));
    }
    EXPECT_FALSE(Style::reduceMotion());
}

TEST(Style, believesWhoKnowsBetter) {
    Style::setReduceMotion(true);
    EXPECT_TRUE(Style::reduceMotion());
    Style::setReduceMotion(false);
    EXPECT_FALSE(Style::reduceMotion());
    Style::setReduceMotion(std::nullopt);
    EXPECT_FALSE(Style::reduceMotion());
}

}  // namespace
}  // namespace quorvel
