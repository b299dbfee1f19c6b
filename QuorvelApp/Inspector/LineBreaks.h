#pragma once

#include <QString>

/// Line breaks of every kind, those of Windows and of documents among them.
namespace quorvel::LineBreaks {

/// With a line feed for each.
QString asLineFeeds(QString text);

/// With a blank for each.
QString asBlanks(QString text);

/// The same, without those at the end: cells that are copied from a spreadsheet have one, which nobody sees and no
/// other cell has.
QString asOneLine(QString text);

}  // namespace quorvel::LineBreaks
