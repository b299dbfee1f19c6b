#include "Inspector/LayerKinds.h"

namespace quorvel::LayerKinds {

std::string_view label(LayerKind kind) {
    switch (kind) {
        case LayerKind::text:
            return "Text";
        case LayerKind::image:
            return "Picture";
        case LayerKind::shape:
            return "Shape";
        case LayerKind::icons:
            return "Icon Row";
    }
    return {};
}

QString symbol(LayerKind kind) {
    switch (kind) {
        case LayerKind::text:
            return QStringLiteral("textformat");
        case LayerKind::image:
            return QStringLiteral("photo");
        case LayerKind::shape:
            return QStringLiteral("square.on.circle");
        case LayerKind::icons:
            return QStringLiteral("star.square.on.square");
    }
    return {};
}

}  // namespace quorvel::LayerKinds
