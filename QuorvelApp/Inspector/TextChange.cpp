#include "Inspector/TextChange.h"

#include <algorithm>

namespace quorvel {

TextChange TextChange::between(const QString& before, const QString& after) {
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype start = 0;
    while (start < shorter && before[start] == after[start]) ++start;
    if (start > 0 && before[start - 1].isHighSurrogate()) --start;

    qsizetype kept = 0;  // at the end
    while (kept < shorter - start && before[before.size() - 1 - kept] == after[after.size() - 1 - kept]) ++kept;
    if (kept > 0 && before[before.size() - kept].isLowSurrogate()) --kept;
    return {start, before.size() - kept - start, after.mid(start, after.size() - kept - start)};
}

}  // namespace quorvel
