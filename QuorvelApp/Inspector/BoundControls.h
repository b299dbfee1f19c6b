#pragma once

#include "Controls/SegmentedPicker.h"
#include "Foundation/RGBA.h"
#include "Inspector/Binding.h"
#include "Inspector/ColorWell.h"

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QCheckBox;

namespace quorvel {

class ContentEditor;
class NumberField;
class OpacitySlider;
class OptionalColor;
class Picker;
class TextField;

/// Makes the controls of a form, each bound to one value: it shows the value on `refresh` and writes what the user
/// makes of it. Showing a value never writes it. A control belongs to the widget that it is put into, which must live
/// as long as this.
class BoundControls {
public:
    TextField* text(const QString& title, Binding<std::string> binding);
    ContentEditor* content(Binding<std::string> binding);
    NumberField* number(const QString& title, const QString& unit, Binding<double> binding);
    QCheckBox* checkBox(const QString& title, Binding<bool> binding);
    OpacitySlider* opacity(const QString& title, Binding<double> binding);
    ColorWell* color(const QString& title, ColorWell::Opacity opacity, Binding<RGBA> binding);
    OptionalColor* optionalColor(const QString& title, const RGBA& fallback, Binding<std::optional<RGBA>> binding);
    /// What stands in the picker while the value is none of the options.
    using Missing = std::function<QString()>;
    Picker* picker(const QString& title, const QStringList& options, Binding<int> binding, Missing missing = {});
    SegmentedPicker* segments(const QString& title, const QList<SegmentedPicker::Segment>& segments,
                              Binding<int> binding);

    /// Adds to what `refresh` does.
    void onRefresh(std::function<void()> show) { shows_.push_back(std::move(show)); }

    /// Adds to what `letGo` does.
    void onLetGo(std::function<void()> letGo) { letsGo_.push_back(std::move(letGo)); }

    /// Every control shows what its value is now.
    void refresh();

    /// Drops what is typed and not stored, ends drags, closes dialogs, lists and menus: what they were for is no longer
    /// shown.
    void letGo();

private:
    std::vector<std::function<void()>> shows_;
    std::vector<std::function<void()>> letsGo_;
};

}  // namespace quorvel
