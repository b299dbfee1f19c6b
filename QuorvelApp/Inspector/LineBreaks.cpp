#include "Inspector/LineBreaks.h"

#include <utility>

namespace quorvel::LineBreaks {

namespace {

bool isLineBreak(QChar character) {
    return character == u'\n' || character == u'\r' || character == QChar::ParagraphSeparator ||
           character == QChar::LineSeparator || character == QChar(0xfdd0) || character == QChar(0xfdd1);
}

QString replaced(QString text, QChar by) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (QChar& character : text)
        if (isLineBreak(character)) character = by;
    return text;
}

}  // namespace

QString asLineFeeds(QString text) {
    return replaced(std::move(text), u'\n');
}

QString asBlanks(QString text) {
    return replaced(std::move(text), u' ');
}

QString asOneLine(QString text) {
    while (!text.isEmpty() && isLineBreak(text.back())) text.chop(1);
    return asBlanks(std::move(text));
}

}  // namespace quorvel::LineBreaks
