#include "Model/MissingArt.h"

#include "Cards/Placeholders.h"

namespace quorvel::MissingArt {

std::vector<std::string> pictureNames(const CardTemplate& template_, const std::vector<Card>& cards) {
    std::vector<const Layer*> layers;
    for (const Side side : {Side::front, Side::back})
        for (const Layer& layer : template_.layers(side))
            if (layer.kind == LayerKind::image) layers.push_back(&layer);

    std::vector<std::string> names;
    names.reserve(layers.size() * cards.size());
    for (const Card& card : cards)
        for (const Layer* layer : layers) names.push_back(Placeholders::resolve(layer->content, &card));
    return names;
}

}  // namespace quorvel::MissingArt
