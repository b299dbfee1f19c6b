#include "Controls/Wording.h"

#include <QTextBoundaryFinder>
#include <QtGlobal>
#include <utility>

namespace quorvel {

#ifdef Q_OS_MACOS
QString shown(std::string_view source) {
    return text(source);
}
#else
QString shown(std::string_view source) {
    // Longer ones stand before what they begin with or contain.
    static constexpr std::pair<const char*, const char*> words[] = {
        {"⇧⌘", "Ctrl+Shift+"},
        {"⌥⌘", "Ctrl+Alt+"},
        {"⌘", "Ctrl+"},
        {"⇧", "Shift+"},
        {"⌥", "Alt+"},
        {"⌫", "Backspace"},
        {"this Mac", "this computer"},
        {"This Mac", "This computer"},
        {"the Finder", "the file browser"},
        {"in Finder", "in the file browser"},
    };
    QString result = text(source);
    for (const auto& [design, here] : words) result.replace(QString::fromUtf8(design), QString::fromUtf8(here));
    return result;
}
#endif

QString breakable(const QString& words, int longest) {
    constexpr QChar lineMayEnd(0x200B);
    QTextBoundaryFinder places(QTextBoundaryFinder::Line, words);
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, words);
    QString result;
    int unbroken = 0;
    for (qsizetype at = 0; at < words.size();) {
        if (unbroken == longest) {
            result += lineMayEnd;
            unbroken = 0;
        }
        const qsizetype next = characters.toNextBoundary();
        const qsizetype end = next > at ? next : words.size();
        result += QStringView(words).sliced(at, end - at);
        at = end;
        places.setPosition(at);
        unbroken = places.isAtBoundary() ? 0 : unbroken + 1;
    }
    return result;
}

}  // namespace quorvel
