#pragma once

#include "Templates/Layer.h"

#include <QString>
#include <string_view>

/// What the kinds of layers are called and which symbol stands for each, wherever the program shows them.
namespace quorvel::LayerKinds {

/// "Text", "Picture", "Shape", "Icon Row".
std::string_view label(LayerKind kind);

/// A name of `Symbols`.
QString symbol(LayerKind kind);

}  // namespace quorvel::LayerKinds
