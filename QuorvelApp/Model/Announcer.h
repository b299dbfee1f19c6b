#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace quorvel {

/// What can change of the model, as coarse as views re-read it.
enum class Change : unsigned {
    decks = 1 << 0,      ///< the list of records, or any record
    selection = 1 << 1,  ///< another deck is open, or none
    tab = 1 << 2,
    openDeck = 1 << 3,  ///< the table, the cards, the state of loading
    thumbnails = 1 << 4,
    canvas = 1 << 5,   ///< the picture on the canvas
    sheet = 1 << 6,    ///< the picture of the preview
    editing = 1 << 7,  ///< the side, the selected layer, the card on the canvas, the wanted page
    undo = 1 << 8,
    status = 1 << 9,    ///< busy, notice, error, whether the sample is being painted
    exports = 1 << 10,  ///< how far the exports are
    newDeck = 1 << 11,  ///< whether the sheet for a new deck is shown
};

/// A set of changes.
struct Changes {
    unsigned bits = 0;

    bool has(Change change) const { return bits & unsigned(change); }
    bool isEmpty() const { return bits == 0; }
    void add(Change change) { bits |= unsigned(change); }
    bool operator==(const Changes&) const = default;
};

/// Tells views that something changed, never what it is now: they re-read. Changes are gathered until the operation
/// that makes them has ended, so that no view sees half of one. Main thread only.
class Announcer {
public:
    using Listener = std::function<void(Changes)>;

    /// Ends when it is destroyed, also from within the listener, and also after the announcer.
    class Subscription {
    public:
        Subscription() = default;

    private:
        friend class Announcer;
        std::shared_ptr<const Listener> listener_;
    };

    /// The listener must not run an event loop, as a modal alert does: until it returns nothing else is announced.
    [[nodiscard]] Subscription subscribe(Listener listener);

    /// The span of one operation. The end of the outermost one announces.
    class Turn {
    public:
        explicit Turn(Announcer& announcer) : announcer_(announcer) { ++announcer_.turns_; }
        ~Turn() {
            if (--announcer_.turns_ == 0) announcer_.announce();
        }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        Announcer& announcer_;
    };

    /// Within a turn.
    void note(Change change) { noted_.add(change); }

private:
    void announce();

    std::vector<std::weak_ptr<const Listener>> listeners_;
    Changes noted_;
    int turns_ = 0;
    bool announcing_ = false;
};

}  // namespace quorvel
