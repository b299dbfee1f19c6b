#include "Controls/Wording.h"

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

}  // namespace quorvel
