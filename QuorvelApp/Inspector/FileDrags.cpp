#include "Inspector/FileDrags.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

namespace quorvel {

bool bringsFiles(const QDropEvent& event) {
    return std::ranges::any_of(event.mimeData()->urls(), &QUrl::isLocalFile);
}

}  // namespace quorvel
