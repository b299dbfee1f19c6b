#pragma once

#include "Model/ExportFlow.h"
#include "Rendering/TestCards.h"
#include "Support/Desktop/FakeDesktop.h"
#include "Support/Desktop/ManualScheduler.h"
#include "Support/Images/ReadPNG.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvel {

/// A deck on screen, a place to save at, and all that an export says, in order.
class ExportFlowTest : public testing::Test {
protected:
    using Path = std::filesystem::path;

    static constexpr const char* shared = "Orchard";     ///< a back that is the same for all
    static constexpr const char* varying = "{{title}}";  ///< one for each card

    /// A small deck: "Rain Barrel" and "Hand/Cart" thrice each, "Never" not at all.
    static ExportFlow::Input smallDeck(const char* back = shared) {
        return deckOf(cardsFrom({{"Title", "Quantity"}, {"Rain Barrel", "3"}, {"Never", "0"}, {"Hand/Cart", "3"}}),
                      back);
    }

    static ExportFlow::Input deckOf(std::vector<Card> cards, const char* back = shared) {
        ExportFlow::Input input;
        input.project.id = UUID::random();
        input.project.name = "Orchard";
        CardTemplate& design = input.project.template_;
        design = CardTemplate("Test", {CardSize::Preset::custom, 5.08, 2.54}, {}, {});
        design.bleedMM = 1.27;
        design.front.emplace_back("Title", LayerKind::text, Frame{0, 0, 5, 2.5}, "{{title}}");
        design.front.emplace_back("Picture", LayerKind::image, Frame{1, 1, 3, 1}, "nowhere.png");
        design.back.emplace_back("Back", LayerKind::text, Frame{0, 0, 5, 2.5}, back);
        Deck deck;
        deck.cards = std::move(cards);
        input.deck = std::make_shared<const Deck>(std::move(deck));
        input.assets = std::make_shared<Assets>();
        return input;
    }

    ExportFlow::Status status() {
        return {
            .busy = [this](auto text) { said.push_back(text ? "busy: " + *text : "idle"); },
            .notice =
                [this](auto text) {
                    said.push_back("notice: " + text);
                    revealedAtNotices.push_back(desktop.revealed.size());
                },
            .error = [this](auto text) { said.push_back("error: " + text); },
            .progress =
                [this] {
                    std::vector<double> fractions;
                    for (const auto& run : flow->runs()) fractions.push_back(run.fraction);
                    seen.push_back(fractions);
                },
        };
    }

    /// Answers the panel, without running the work.
    void begin(ExportKind kind, std::optional<Path> answer) {
        desktop.answers.push_back(std::move(answer));
        flow->export_(kind, [this] { return onScreen; });
    }

    /// The whole way.
    void export_(ExportKind kind, std::optional<Path> answer) {
        begin(kind, std::move(answer));
        scheduler.settle();
    }

    void saveCalibrationPage(std::optional<Path> answer) {
        desktop.answers.push_back(std::move(answer));
        flow->saveCalibrationPage(onScreen->project);
    }

    /// The names in a folder, sorted.
    static std::vector<std::string> listing(const Path& folder) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }

    static std::pair<int, int> sizeOf(const Path& png) {
        const Image image = readPNG(png);
        return {image.width(), image.height()};
    }

    TemporaryFolder folder;
    FakeDesktop desktop;
    ManualScheduler scheduler;
    std::vector<std::string> said;
    std::vector<std::vector<double>> seen;  ///< the fractions of all runs, at each news
    std::vector<std::size_t> revealedAtNotices;
    std::optional<ExportFlow::Input> onScreen = smallDeck();
    std::optional<ExportFlow> flow{std::in_place, scheduler, desktop, status()};
};

}  // namespace quorvel
