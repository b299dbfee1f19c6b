#include "Templates/CardTemplate.h"

#include "Cards/Placeholders.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <utility>

namespace quorvel {

CardTemplate::CardTemplate(std::string templateName, CardSize trimSize, std::vector<Layer> frontLayers,
                           std::vector<Layer> backLayers)
    : id(UUID::random()),
      name(std::move(templateName)),
      size(trimSize),
      front(std::move(frontLayers)),
      back(std::move(backLayers)) {}

bool CardTemplate::hasVaryingBack() const {
    return std::any_of(back.begin(), back.end(), [](const Layer& layer) {
        return Placeholders::mayOccurIn(layer.content) || !layer.rules.empty();
    });
}

std::set<std::string> CardTemplate::referencedNames() const {
    std::set<std::string> result;
    for (const auto* layers : {&front, &back}) {
        for (const Layer& layer : *layers) {
            for (std::string& used : Placeholders::names(layer.content)) result.insert(std::move(used));
            for (const StyleRule& rule : layer.rules) result.insert(Text::lowercased(rule.field));
        }
    }
    return result;
}

}  // namespace quorvel
