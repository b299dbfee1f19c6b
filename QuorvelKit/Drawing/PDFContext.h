#pragma once

#include "Drawing/Cairo.h"
#include "Drawing/DrawingContext.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// A PDF document in memory, a page at a time, in points with y up. Text stays text with subset fonts; a picture is
/// stored once however often it is drawn; the same marks give the same bytes.
class PDFContext {
public:
    struct Info {
        std::string creator;
        std::string title;  ///< empty: none
    };

    /// Nothing when the surface can't be made. The date in the file is that of SOURCE_DATE_EPOCH, else there is none.
    static std::unique_ptr<PDFContext> make(const Info& info);
    ~PDFContext();

    /// A page of exactly this size in points; it is drawn on until endPage.
    DrawingContext& beginPage(const Size& size);
    void endPage();

    /// The bytes; nothing when anything failed on the way. This object is used up.
    std::optional<std::string> finish();

private:
    PDFContext() = default;

    std::string bytes_;
    bool failed_ = false;
    CairoSurface surface_;
    CairoContext cairo_;
    std::unique_ptr<DrawingContext> context_;
};

}  // namespace quorvel
