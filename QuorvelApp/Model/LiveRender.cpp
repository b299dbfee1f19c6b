#include "Model/LiveRender.h"

#include <utility>

namespace quorvel {

LiveRender::LiveRender(Scheduler& scheduler, std::chrono::milliseconds delay, Store store)
    : scheduler_(scheduler), delay_(delay), store_(std::move(store)) {}

void LiveRender::restart(Draw draw) {
    task_.cancel();
    task_ = scheduler_.later(delay_, [this, draw = std::move(draw)] {
        task_ = inBackground(scheduler_, draw, [this](std::optional<Image> image) { finish(std::move(image)); });
    });
}

void LiveRender::cancel() {
    task_.cancel();
}

void LiveRender::finish(std::optional<Image> image) {
    // What stores it may restart.
    task_ = {};
    store_(std::move(image));
}

}  // namespace quorvel
