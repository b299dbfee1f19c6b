#pragma once

#include "Cards/Deck.h"
#include "Pictures/Assets.h"
#include "Rendering/CardRenderer.h"
#include "Samples/SampleDeck.h"
#include "Samples/SampleTemplates.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quorvel {

/// The sample deck's cards and its pictures on the disk, for as long as the program runs.
class SampleOnDisk {
public:
    SampleOnDisk()
        : folder_(std::filesystem::temp_directory_path() / ("quorvel-benchmark-" + std::to_string(getpid()))) {
        if (!SampleDeck::write(folder_)) {
            std::fputs("the sample deck can't be written\n", stderr);
            std::exit(1);
        }
        DataTable table = SampleDeck::table();
        const auto mapping = FieldMapping::guess(table.headers);
        deck_ = std::make_shared<const Deck>(std::move(table), mapping);
        assets_ = std::make_shared<Assets>(std::vector{folder_});
    }
    ~SampleOnDisk() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    SampleOnDisk(const SampleOnDisk&) = delete;
    SampleOnDisk& operator=(const SampleOnDisk&) = delete;

    const std::shared_ptr<const Deck>& deck() const { return deck_; }
    const std::vector<Card>& cards() const { return deck_->cards; }

    CardRenderer renderer(SampleTemplates::Kind kind,
                          CardRenderer::MissingPictures missing = CardRenderer::MissingPictures::leaveBlank) const {
        return {SampleTemplates::make(kind, SampleDeck::name), assets_, missing};
    }

private:
    std::filesystem::path folder_;
    std::shared_ptr<const Deck> deck_;
    std::shared_ptr<Assets> assets_;
};

}  // namespace quorvel
