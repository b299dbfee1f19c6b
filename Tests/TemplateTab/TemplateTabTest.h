#pragma once

#include "Support/Widgets/WindowTest.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QTest>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// A deck with a design of a few plain layers whose places are easy to aim at, selected none, nothing to undo.
class TemplateTabTest : public WindowTest {
protected:
    TemplateTabTest() {
        model.newDeck(SampleTemplates::Kind::classic, "Game");
        model.setTemplate(design());
        undo->removeAllActions();
        settle();
    }

    static CardTemplate design() {
        const auto shape = [](const char* name, Frame frame) {
            Layer layer(name, LayerKind::shape, frame, "");
            layer.fill = RGBA::bytes(0xE0, 0xE0, 0xD0);
            return layer;
        };
        Layer title("Title", LayerKind::text, {5, 5, 40, 10}, "{{title}}");
        title.rules.emplace_back();
        Layer ghost("Ghost", LayerKind::icons, {5, 70, 20, 10}, "{{icons}}");
        ghost.hidden = true;
        Layer background("Background", LayerKind::image, {-3, -3, 69.5, 94.9}, "{{art}}");
        background.fill = RGBA::bytes(0xF0, 0xF0, 0xE0);
        return {"Plain",
                CardSize::poker,
                {background, title, shape("Badge", {45, 20, 12, 12}), shape("Line", {5, 60, 50, 0}), ghost},
                {shape("Pattern", {10, 10, 30, 30})}};
    }

    /// Of the front.
    const Layer& layer(std::string_view name) const {
        for (const Layer& each : model.layers(Side::front))
            if (each.name == name) return each;
        ADD_FAILURE() << "no layer is called " << name;
        return model.layers(Side::front).front();
    }
    void select(std::string_view name) { model.selectLayer(layer(name).id); }
    /// The selected layer's name; empty without one.
    std::string selected() const {
        const Layer* found = model.selectedLayerValue();
        return found ? found->name : std::string();
    }
    std::vector<std::string> names(Side side = Side::front) const {
        std::vector<std::string> names;
        for (const Layer& each : model.layers(side)) names.push_back(each.name);
        return names;
    }
    std::string undoName() const { return undo->undoName().value_or(""); }

    /// In its middle.
    static void click(QWidget& widget) { QTest::mouseClick(&widget, Qt::LeftButton); }
    /// How many pixels of the widget as it is painted now have exactly this colour.
    static int pixels(QWidget& widget, const QColor& color) {
        const QImage seen = widget.grab().toImage();
        int count = 0;
        for (int y = 0; y < seen.height(); ++y)
            for (int x = 0; x < seen.width(); ++x) count += seen.pixelColor(x, y) == color;
        return count;
    }
};

}  // namespace quorvel
