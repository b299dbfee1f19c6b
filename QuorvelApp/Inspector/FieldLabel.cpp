#include "Inspector/FieldLabel.h"

#include "Controls/Wording.h"

namespace quorvel::FieldLabel {

namespace {

constexpr qsizetype longest = 60;

}  // namespace

QString inPicker(std::string_view name) {
    QString label = text(name);
    for (QChar& character : label)
        if (character.isSpace() || character.category() == QChar::Other_Control) character = u' ';
    if (label.size() <= longest) return label;
    qsizetype cut = longest - 1;
    if (label[cut - 1].isHighSurrogate()) --cut;
    return label.left(cut) + u'…';
}

QString inMenu(std::string_view name) {
    return inPicker(name).replace(u'&', QLatin1String("&&"));
}

}  // namespace quorvel::FieldLabel
