#include "Controls/Style.h"

#include "Controls/QuietStyle.h"

#include <QApplication>
#include <QEvent>
#include <QSettings>
#include <QStandardPaths>
#include <QStyle>
#include <QToolTip>
#include <QWidget>
#include <optional>

namespace quorvel::Style {

namespace {

struct Colors {
    QColor window, surface, base, alternate, button, text, secondary, disabled;
    QColor line, accent, onAccent, link, visited, warning, good, underPage, tip, tipText;
};

const Colors& colors(bool dark) {
    static const Colors light{
        .window = 0xf4f5f7,
        .surface = 0xffffff,
        .base = 0xffffff,
        .alternate = 0xf7f8fa,
        .button = 0xffffff,
        .text = 0x1c1f26,
        .secondary = 0x565d6a,
        .disabled = 0x9ca2ad,
        .line = 0xd6d9df,
        .accent = 0x2f62c9,
        .onAccent = 0xffffff,
        .link = 0x2457bd,
        .visited = 0x6a4aa8,
        .warning = 0x9c4a00,
        .good = 0x1b7038,
        .underPage = 0xdcdfe4,
        .tip = 0x2a2e36,
        .tipText = 0xf4f5f7,
    };
    static const Colors dark_{
        .window = 0x202226,
        .surface = 0x282b30,
        .base = 0x17191c,
        .alternate = 0x1c1e22,
        .button = 0x2f3238,
        .text = 0xe8eaed,
        .secondary = 0xa7adb8,
        .disabled = 0x6c727d,
        .line = 0x3b3f46,
        .accent = 0x3a72dc,
        .onAccent = 0xffffff,
        .link = 0x86b2ff,
        .visited = 0xbda2f2,
        .warning = 0xf5a04a,
        .good = 0x5fc77f,
        .underPage = 0x121316,
        .tip = 0x3a3e46,
        .tipText = 0xf4f5f7,
    };
    return dark ? dark_ : light;
}

QPalette makePalette(bool dark) {
    const Colors& c = colors(dark);
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, const QColor& color) { palette.setColor(role, color); };
    set(QPalette::Window, c.window);
    set(QPalette::WindowText, c.text);
    set(QPalette::Base, c.base);
    set(QPalette::AlternateBase, c.alternate);
    set(QPalette::Text, c.text);
    set(QPalette::PlaceholderText, c.secondary);
    set(QPalette::Button, c.button);
    set(QPalette::ButtonText, c.text);
    set(QPalette::BrightText, c.onAccent);
    set(QPalette::Highlight, c.accent);
    set(QPalette::HighlightedText, c.onAccent);
    set(QPalette::Link, c.link);
    set(QPalette::LinkVisited, c.visited);
    set(QPalette::ToolTipBase, c.tip);
    set(QPalette::ToolTipText, c.tipText);
    set(QPalette::Light, dark ? c.button.lighter(115) : QColor(Qt::white));
    set(QPalette::Midlight, dark ? c.button : c.window);
    set(QPalette::Mid, c.line);
    set(QPalette::Dark, dark ? c.base.darker(130) : c.line.darker(130));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, c.disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, c.line);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, c.disabled);
    return palette;
}

/// Keeps the program's look in step with the system's. The palette that we set leaves one role that nothing draws with
/// to the platform: that is how Qt tells that the platform's palette has changed under ours.
class Look : public QObject {
public:
    explicit Look(QApplication& application) : QObject(&application) { application.installEventFilter(this); }

    static Look& of(QApplication& application) {
        for (QObject* child : application.children())
            if (auto* look = dynamic_cast<Look*>(child)) return *look;
        return *new Look(application);
    }

    void wear(Appearance appearance) {
        appearance_ = appearance;
        changing_ = true;
        bool dark = appearance == Appearance::dark;
        if (appearance == Appearance::system) {
            // Without ours, what is left is the platform's.
            QApplication::setPalette(QPalette());
            dark = isDark(QApplication::palette());
        }
        const QPalette palette = makePalette(dark);
        QApplication::setPalette(palette);
        QToolTip::setPalette(palette);
        changing_ = false;
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange && object == parent() && !changing_) wear(appearance_);
        return false;
    }

private:
    Appearance appearance_ = Appearance::system;
    bool changing_ = false;
};

/// Sets the text colours of its parent again whenever the palette has changed.
class ColoredText : public QObject {
public:
    using Color = QColor (*)(const QPalette&);

    ColoredText(QWidget* widget, Color color) : QObject(widget), color_(color) {
        widget->installEventFilter(this);
        set(*widget);
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::PaletteChange) set(static_cast<QWidget&>(*object));
        return false;
    }

private:
    void set(QWidget& widget) const {
        QPalette palette = widget.palette();
        const QColor wanted = color_(palette);
        if (palette.color(QPalette::Active, QPalette::WindowText) == wanted) return;
        const Colors& c = colors(isDark(palette));
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText}) {
            palette.setColor(role, wanted);
            palette.setColor(QPalette::Disabled, role, c.disabled);
        }
        widget.setPalette(palette);
    }

    Color color_;
};

std::optional<bool> toldReduceMotion;

/// Whether a settings file of the desktop, which its other programs read too, turns animations off.
bool desktopReducesMotion() {
    const auto value = [](const char* file, const char* key) -> QVariant {
        const QString path = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QLatin1String(file));
        return path.isEmpty() ? QVariant() : QSettings(path, QSettings::IniFormat).value(QLatin1String(key));
    };
    for (const char* file : {"gtk-4.0/settings.ini", "gtk-3.0/settings.ini"}) {
        const QString animations = value(file, "Settings/gtk-enable-animations").toString().trimmed().toLower();
        if (animations == QLatin1String("0") || animations == QLatin1String("false")) return true;
    }
    bool isNumber = false;
    const double factor = value("kdeglobals", "KDE/AnimationDurationFactor").toDouble(&isNumber);
    return isNumber && factor <= 0;
}

double scale(TextSize size) {
    switch (size) {
        case TextSize::caption:
            return 0.85;
        case TextSize::callout:
            return 0.92;
        case TextSize::body:
            return 1;
        case TextSize::title3:
            return 1.3;
        case TextSize::title1:
            return 2;
    }
    return 1;
}

}  // namespace

QFont font(TextSize size, QFont::Weight weight) {
    QFont font = QApplication::font();
    if (font.pixelSize() > 0)
        font.setPixelSize(qRound(font.pixelSize() * scale(size)));
    else
        font.setPointSizeF(font.pointSizeF() * scale(size));
    font.setWeight(weight);
    return font;
}

void apply(QApplication& application, Appearance appearance) {
    if (!dynamic_cast<QuietStyle*>(QApplication::style())) QApplication::setStyle(new QuietStyle);
    Look::of(application).wear(appearance);
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Window).lightness() < 128;
}

QColor secondary(const QPalette& palette) {
    return colors(isDark(palette)).secondary;
}

QColor warning(const QPalette& palette) {
    return colors(isDark(palette)).warning;
}

QColor good(const QPalette& palette) {
    return colors(isDark(palette)).good;
}

QColor accent(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Highlight);
}

QColor underPage(const QPalette& palette) {
    return colors(isDark(palette)).underPage;
}

QColor surface(const QPalette& palette) {
    return colors(isDark(palette)).surface;
}

QColor line(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Mid);
}

QColor panel(const QPalette& palette, double opacity) {
    QColor color = secondary(palette);
    color.setAlphaF(float(opacity));
    return color;
}

void makeSecondary(QWidget* widget) {
    new ColoredText(widget, &secondary);
}

void makeWarning(QWidget* widget) {
    new ColoredText(widget, &warning);
}

bool reduceMotion() {
    if (toldReduceMotion) return *toldReduceMotion;
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0 || desktopReducesMotion();
}

void setReduceMotion(std::optional<bool> reduce) {
    toldReduceMotion = reduce;
}

}  // namespace quorvel::Style
