#pragma once

#include "Foundation/JSON.h"
#include "Templates/CardTemplate.h"

/// The JSON form of a design, the same in template files and in deck records. Every key is required but the optional
/// colours; unknown keys are ignored; a colour text that can't be read is black.
namespace quorvel {

JSON toJSON(const CardTemplate& template_);
std::expected<CardTemplate, JSONFailure> cardTemplateFromJSON(const JSON& json);

/// A template file: one design, pretty-printed with sorted keys.
std::string templateFileText(const CardTemplate& template_);

/// Reads a template file and gives the design a new id; its layers and rules keep theirs.
std::expected<CardTemplate, JSONFailure> templateFromFileText(std::string_view text);

/// What the user reads when a template file can't be read, whatever the reason.
inline constexpr std::string_view notATemplateMessage = "That file isn’t a Quorvel template.";

}  // namespace quorvel
