#include "Printing/CalibrationPage.h"

#include "Drawing/PDFContext.h"
#include "Drawing/Path.h"
#include "Foundation/Units.h"
#include "Pictures/Assets.h"
#include "Printing/Duplex.h"
#include "Rendering/TextDrawing.h"
#include "Rendering/TextLayout.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvel::SheetPDF {

namespace {

/// Of the page, from its top-left corner, y down.
constexpr std::array<Point, 5> targets{{{0.5, 0.5}, {0.25, 0.3}, {0.75, 0.3}, {0.25, 0.75}, {0.75, 0.75}}};

constexpr int scaleMM = 6;
constexpr double frontArm = Units::points(scaleMM);
constexpr double backArm = Units::points(9);  ///< longer, so that it stands out against the scales when held to a light
constexpr double frontLineWidth = 0.4;
constexpr double backLineWidth = 0.6;
constexpr double leastMarginMM = 8;

TextStyle style(double size, TextAlign align, VerticalAlign verticalAlign, bool bold) {
    return {std::string(defaultFontFamily), size, RGBA::black, align, verticalAlign, bold};
}

/// The words' places on a page, in points with y up.
struct Page {
    Size size;
    double margin = 0;
    Assets assets;

    /// A box whose top lies `below` the margin's top edge.
    Rect lines(double below, double height) const {
        return {margin, size.height - margin - below - height, size.width - 2 * margin, height};
    }

    void drawTitle(const std::string& title, DrawingContext& context) {
        drawText(title, style(13, TextAlign::left, VerticalAlign::top, true), assets, context, lines(0, 20));
    }

    void drawSteps(const std::string& steps, DrawingContext& context) {
        drawText(steps, style(8.5, TextAlign::left, VerticalAlign::top, false), assets, context, lines(24, 66));
    }

    void drawSign(const std::string& sign, Point centre, DrawingContext& context) {
        constexpr double width = 12;
        constexpr double height = 16;
        drawText(sign, style(8, TextAlign::center, VerticalAlign::middle, false), assets, context,
                 {centre.x - width / 2, centre.y - height / 2, width, height});
    }
};

void addCross(Path& path, Point centre, double arm) {
    path.move({centre.x - arm, centre.y}).line({centre.x + arm, centre.y});
    path.move({centre.x, centre.y + arm}).line({centre.x, centre.y - arm});
}

/// A cross with a tick at every millimetre, longer at the fifth.
Path scales(Point centre) {
    Path path;
    addCross(path, centre, frontArm);
    for (int i = -scaleMM; i <= scaleMM; ++i) {
        if (i == 0) continue;
        const double along = Units::points(i);
        const double half = Units::points(i % 5 == 0 ? 2.2 : 1.1);
        path.move({centre.x + along, centre.y + half}).line({centre.x + along, centre.y - half});
        path.move({centre.x - half, centre.y - along}).line({centre.x + half, centre.y - along});
    }
    return path;
}

void drawFront(Page& page, const CalibrationText& text, DrawingContext& context) {
    page.drawTitle(text.frontTitle, context);
    page.drawSteps(text.steps, context);
    const double signDistance = Units::points(8);
    for (const Point& target : targets) {
        const Point centre{page.size.width * target.x, page.size.height - page.size.height * target.y};
        context.stroke(scales(centre), RGBA::black, frontLineWidth);
        page.drawSign("+", {centre.x + signDistance, centre.y}, context);
        page.drawSign("−", {centre.x - signDistance, centre.y}, context);
        page.drawSign("+", {centre.x, centre.y - signDistance}, context);
        page.drawSign("−", {centre.x, centre.y + signDistance}, context);
    }
}

/// The targets as they fall on the back of the sheet, moved by the back offset.
void drawBack(Page& page, const SheetSettings& settings, bool landscape, const CalibrationText& text,
              DrawingContext& context) {
    page.drawTitle(text.backTitle, context);
    const auto [width, height] = page.size;
    const double offsetX = Units::points(settings.backOffsetXMM);
    const double offsetY = Units::points(settings.backOffsetYMM);
    Path crosses;
    for (const auto& [fx, fy] : targets) {
        const Point down = Duplex::mirrorsHorizontally(landscape, settings.flip)
                               ? Point{width - width * fx + offsetX, height * fy - offsetY}
                               : Point{width * fx - offsetX, height - height * fy + offsetY};
        addCross(crosses, {down.x, height - down.y}, backArm);
    }
    context.stroke(crosses, RGBA::black, backLineWidth);
}

}  // namespace

std::string CalibrationText::defaultSteps() {
    return "1. Print both pages double-sided at 100% (Actual Size), with the same paper and flip setting as your "
           "cards.\n"
           "2. Hold the sheet up to a light, front facing you.\n"
           "3. At the middle target, read where the back’s cross meets the scales: millimetres right and down are "
           "positive, left and up negative.\n"
           "4. Enter those two numbers as the back offset, then print this page again to check: the crosses should sit "
           "on the centres.";
}

std::optional<std::string> calibrationPage(const SheetSettings& settings, bool landscape, const CalibrationText& text) {
    Page page;
    page.size = sizePoints(settings.paper);
    if (landscape) std::swap(page.size.width, page.size.height);
    page.margin = Units::points(std::max(leastMarginMM, settings.marginMM));
    const auto pdf = PDFContext::make({.creator = "Quorvel", .title = {}});
    if (!pdf) return std::nullopt;
    drawFront(page, text, pdf->beginPage(page.size));
    pdf->endPage();
    drawBack(page, settings, landscape, text, pdf->beginPage(page.size));
    pdf->endPage();
    return pdf->finish();
}

}  // namespace quorvel::SheetPDF
