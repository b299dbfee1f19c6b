#pragma once

#include "Drawing/Cairo.h"
#include "Drawing/DrawingContext.h"

#include <memory>
#include <optional>

namespace quorvel {

/// A bitmap to draw on, transparent at first, in units of pixels with y up.
class BitmapContext {
public:
    /// Nothing when a side is below 1 or above cairo's limit (32,767), or there isn't the memory.
    static std::optional<BitmapContext> make(int width, int height);

    DrawingContext& context() { return *context_; }

    /// The bitmap as an image, without a copy; this object is used up. `alpha` is found by looking at the pixels.
    Image finish() &&;

private:
    BitmapContext() = default;

    int width_ = 0;
    int height_ = 0;
    std::shared_ptr<std::uint32_t[]> pixels_;
    CairoSurface surface_;
    CairoContext cairo_;
    std::unique_ptr<DrawingContext> context_;
};

}  // namespace quorvel
