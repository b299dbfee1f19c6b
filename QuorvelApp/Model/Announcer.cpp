#include "Model/Announcer.h"

#include <utility>

namespace quorvel {

Announcer::Subscription Announcer::subscribe(Listener listener) {
    Subscription subscription;
    subscription.listener_ = std::make_shared<const Listener>(std::move(listener));
    listeners_.push_back(subscription.listener_);
    return subscription;
}

void Announcer::announce() {
    // A listener may operate on the model: what changes then is announced to all in another round.
    if (announcing_) return;
    announcing_ = true;
    while (!noted_.isEmpty()) {
        const Changes changes = std::exchange(noted_, {});
        std::erase_if(listeners_, [](const auto& listener) { return listener.expired(); });
        const auto listeners = listeners_;
        for (const auto& each : listeners)
            if (const auto listener = each.lock()) (*listener)(changes);
    }
    announcing_ = false;
}

}  // namespace quorvel
