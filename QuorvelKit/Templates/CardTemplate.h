#pragma once

#include "Templates/CardSize.h"
#include "Templates/Layer.h"

#include <set>
#include <string>
#include <vector>

namespace quorvel {

enum class Side { front, back };

template <>
struct EnumText<Side> {
    static constexpr std::array cases{std::pair{Side::front, std::string_view("front")},
                                      std::pair{Side::back, std::string_view("back")}};
};

/// One card design. The first layer of a side lies at the bottom.
struct CardTemplate {
    UUID id;
    std::string name;
    CardSize size;
    double bleedMM = 3;
    double safeMM = 3;  ///< inset of the safe zone guide
    double cornerRadiusMM = 3;
    RGBA background = RGBA::white;
    RGBA backBackground = RGBA::bytes(0x33, 0x38, 0x4D);
    std::vector<Layer> front;
    std::vector<Layer> back;

    CardTemplate() = default;

    /// With a new id and the defaults above.
    CardTemplate(std::string name, CardSize size, std::vector<Layer> front, std::vector<Layer> back);

    bool operator==(const CardTemplate&) const = default;

    const std::vector<Layer>& layers(Side side) const { return side == Side::front ? front : back; }
    const RGBA& backgroundColor(Side side) const { return side == Side::front ? background : backBackground; }

    /// Whether the back can differ from card to card: any layer there, hidden ones too, has a placeholder or a rule.
    bool hasVaryingBack() const;

    /// The lower-case names of columns and fields that the design refers to.
    std::set<std::string> referencedNames() const;
};

}  // namespace quorvel
