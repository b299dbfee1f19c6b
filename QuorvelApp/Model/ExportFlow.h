#pragma once

#include "Cards/Deck.h"
#include "Desktop/Desktop.h"
#include "Desktop/Scheduler.h"
#include "Library/DeckProject.h"
#include "Model/ExportKind.h"
#include "Pictures/Assets.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// The exports from the question where to save to the sentence at the end. The files are made in the background from
/// copies, so the deck may be edited, closed or deleted meanwhile. Main thread only.
///
/// Several exports may run at once. The busy text is then that of the one begun last; it goes when none is left.
class ExportFlow {
public:
    /// The words of the status banner, as they are to be shown now. All are set.
    struct Status {
        std::function<void(std::optional<std::string>)> busy;
        std::function<void(std::string)> notice;
        std::function<void(std::string)> error;
        std::function<void()> progress;  ///< `runs` has changed
    };

    /// An export that is under way, from its start to its end, whatever becomes of the deck.
    struct Run {
        std::uint64_t id = 0;
        ExportKind kind = ExportKind::sheets;
        std::string deckName;
        std::string busyText;
        double fraction = 0;  ///< 0 to 1, never falling
    };

    ExportFlow(Scheduler& scheduler, Desktop& desktop, Status status);

    /// What is under way goes on to its end and says nothing more.
    ~ExportFlow();
    ExportFlow(const ExportFlow&) = delete;
    ExportFlow& operator=(const ExportFlow&) = delete;

    /// What an export takes of the deck. It is asked for after the panel was answered, so that what is exported is what
    /// is on screen then; nothing when the deck has gone.
    struct Input {
        DeckProject project;
        std::shared_ptr<const Deck> deck;  ///< never null
        std::shared_ptr<Assets> assets;    ///< never null
    };
    using InputSource = std::function<std::optional<Input>()>;

    /// Asks where to save, then runs. Without a deck or without cards only the error is set. When another deck has
    /// taken the place of the one that the panel was shown for, nothing happens.
    void export_(ExportKind kind, const InputSource& input);

    /// The page that measures the printer's offset, saved on the spot; it needs a deck but no cards.
    void saveCalibrationPage(DeckProject project);

    /// Those under way, the oldest first.
    const std::list<Run>& runs() const { return runs_; }

private:
    using Weak = std::weak_ptr<ExportFlow*>;

    void run(ExportKind kind, Input input, std::filesystem::path target);
    void setFraction(std::uint64_t id, double fraction);
    void end(std::uint64_t id, const std::expected<std::string, std::string>& result,
             const std::filesystem::path& target);

    Scheduler& scheduler_;
    Desktop& desktop_;
    Status status_;
    std::list<Run> runs_;
    std::uint64_t lastID_ = 0;
    std::shared_ptr<ExportFlow*> self_;  // how jobs that come back find out whether this is still there
};

}  // namespace quorvel
