#pragma once

#include <QIcon>
#include <string_view>

/// Pictures of the built-in icons for menus.
namespace quorvel::IconPictures {

/// In its own colours, sharp at every scale.
QIcon icon(std::string_view name);

}  // namespace quorvel::IconPictures
