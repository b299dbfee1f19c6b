#pragma once

#include "Library/DeckProject.h"

namespace quorvel {

/// A record with something in every field.
inline DeckProject makeDeck(std::string name = "Game") {
    DeckProject project;
    project.id = UUID::random();
    project.name = std::move(name);
    Layer layer("Title", LayerKind::text, {1, 2.5, 30, 4}, "{{title}}");
    project.template_ = CardTemplate("Design", CardSize::tarot, {layer}, {});
    project.mapping.columns = {{"title", "Card Name"}, {"quantity", "Copies"}};
    project.sheet.cutMarks = false;
    project.source = Bookmark{"foo", "cards.csv", "/game/cards.csv"};
    project.artFolder = Bookmark{std::nullopt, "The sample deck’s folder", "/game"};
    project.iconFolder = Bookmark{std::nullopt, "icons", "/icons"};
    project.sheetIndex = 2;
    project.imageBleed = false;
    project.imageDPI = 600;
    project.created = 800'712'000.125;
    return project;
}

}  // namespace quorvel
