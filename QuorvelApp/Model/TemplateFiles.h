#pragma once

#include "Desktop/Desktop.h"
#include "Templates/CardTemplate.h"

#include <expected>
#include <optional>
#include <string>

/// A design as a file of its own. Panels are modal; failures are sentences for the user.
namespace quorvel::TemplateFiles {

/// Asks where to, and writes; a cancel is no failure.
std::expected<void, std::string> exportTemplate(Desktop& desktop, CardTemplate template_);

/// Asks for a file and reads it; nothing after a cancel. The design has a new id and keeps its name.
std::expected<std::optional<CardTemplate>, std::string> importTemplate(Desktop& desktop);

}  // namespace quorvel::TemplateFiles
