#pragma once

#include <QString>
#include <string_view>

/// How the name of a field or column is offered. A header may be anything that a cell can hold.
namespace quorvel::FieldLabel {

/// On one line, and not wider than a menu should be.
QString inPicker(std::string_view name);

/// The same, where "&" would mark a key.
QString inMenu(std::string_view name);

}  // namespace quorvel::FieldLabel
