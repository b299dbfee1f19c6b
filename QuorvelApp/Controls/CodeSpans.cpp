#include "Controls/CodeSpans.h"

#include <QFontDatabase>
#include <QLabel>

namespace quorvel::CodeSpans {

namespace {

QString html(const QStringList& parts) {
    const QString family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family().toHtmlEscaped();
    QString html;
    for (qsizetype index = 0; index < parts.size(); ++index)
        html += index % 2 == 0 ? parts[index].toHtmlEscaped()
                               : QStringLiteral("<span style=\"font-family:'%1'; white-space:nowrap\">%2</span>")
                                     .arg(family, parts[index].toHtmlEscaped());
    return html;
}

}  // namespace

void show(const QString& sentence, QLabel& label) {
    const QStringList parts = sentence.split(u'`');
    label.setTextFormat(parts.size() > 1 ? Qt::RichText : Qt::PlainText);
    label.setText(parts.size() > 1 ? html(parts) : sentence);
    label.setAccessibleName(parts.size() > 1 ? parts.join(QString()) : QString());
}

}  // namespace quorvel::CodeSpans
