#include "Inspector/TemplateSettings.h"

#include "Controls/NumberField.h"
#include "Controls/Picker.h"
#include "Controls/Style.h"
#include "Controls/Wording.h"
#include "Inspector/MenuButton.h"
#include "Inspector/TextField.h"
#include "Samples/SampleTemplates.h"
#include "Templates/TemplateEdits.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace quorvel {

namespace {

constexpr double mostBleedMM = 10;
constexpr double mostSafeMM = 15;
constexpr double mostCornerRadiusMM = 10;

Binding<double> upTo(double most, Binding<double> binding) {
    return {std::move(binding.read),
            [most, write = std::move(binding.write)](double value) { write(std::clamp(value, 0.0, most)); }};
}

}  // namespace

TemplateSettings::TemplateSettings(AppModel& model, QWidget* parent) : GroupedForm(parent), model_(model) {
    addName();
    addSize();
    addGround();
    addFiles();
    refresh();
}

void TemplateSettings::refresh() {
    controls_.refresh();
}

template <class Value>
Binding<Value> TemplateSettings::field(Value CardTemplate::* place) {
    return {[this, place] { return model_.template_().*place; },
            [this, place](Value value) {
                change([&](CardTemplate changed) {
                    changed.*place = std::move(value);
                    return changed;
                });
            }};
}

void TemplateSettings::change(const std::function<CardTemplate(CardTemplate)>& edit) {
    model_.setTemplate(edit(model_.template_()));
    // The model may have refused it, and then announces nothing.
    refresh();
}

void TemplateSettings::addName() {
    Section section = addSection(text("Template"));
    section.addRow(text("Name"), controls_.text(text("Name"), field(&CardTemplate::name)));
}

void TemplateSettings::addSize() {
    Section section = addSection(text("Card size"));
    QStringList labels;
    for (const auto& [preset, name] : EnumText<CardSize::Preset>::cases) labels += text(CardSize::label(preset));
    const Binding<CardSize::Preset> preset{
        [this] { return model_.template_().size.preset; },
        [this](CardSize::Preset chosen) {
            change([&](CardTemplate changed) { return TemplateEdits::withPreset(std::move(changed), chosen); });
        }};
    section.addRow(text("Size"), controls_.picker(text("Size"), labels, byIndex(preset)));

    const auto size = [this] { return model_.template_().size; };
    const auto resize = [this](double widthMM, double heightMM) {
        change([&](CardTemplate changed) { return TemplateEdits::withSize(std::move(changed), widthMM, heightMM); });
    };
    QWidget* width = addNumber(
        section, text("Width"),
        {[size] { return size().widthMM; }, [size, resize](double typed) { resize(typed, size().heightMM); }});
    QWidget* height = addNumber(
        section, text("Height"),
        {[size] { return size().heightMM; }, [size, resize](double typed) { resize(size().widthMM, typed); }});
    controls_.onRefresh([section, size, width, height]() mutable {
        for (QWidget* row : {width, height}) section.setRowVisible(row, size().preset == CardSize::Preset::custom);
    });

    addNumber(section, text("Bleed"), upTo(mostBleedMM, field(&CardTemplate::bleedMM)));
    addNumber(section, text("Safe zone"), upTo(mostSafeMM, field(&CardTemplate::safeMM)));
    addNumber(section, text("Corner radius"), upTo(mostCornerRadiusMM, field(&CardTemplate::cornerRadiusMM)));
    section.setFooter(
        text("Bleed is the art past the cut line (3 mm, or 1/8 in = 3.175 mm, for most print shops). Keep text inside "
             "the safe zone (dashed)."));
}

void TemplateSettings::addGround() {
    Section section = addSection(text("Front"));
    const auto place = [this] {
        return model_.state()._side == Side::front ? &CardTemplate::background : &CardTemplate::backBackground;
    };
    section.addRow(text("Background"), controls_.color(text("Background"), ColorWell::Opacity::none,
                                                       {[this, place] { return model_.template_().*place(); },
                                                        [this, place](RGBA color) { field(place()).write(color); }}));
    auto* hint = new QLabel(text("Select a layer on the card or in the list to edit it."));
    hint->setWordWrap(true);
    Style::makeSecondary(hint);
    section.addRow(hint);
    controls_.onRefresh([this, section]() mutable {
        section.setTitle(model_.state()._side == Side::front ? text("Front") : text("Back"));
    });
}

void TemplateSettings::addFiles() {
    Section section = addSection(text("Template"));
    auto* menu = new QMenu(this);
    for (const auto& [kind, name] : EnumText<SampleTemplates::Kind>::cases)
        menu->addAction(text(SampleTemplates::label(kind)), this, [this, kind = kind] { model_.startOver(kind); });
    controls_.onLetGo([menu] { menu->close(); });
    section.addRow(new MenuButton(text("Start Over from a Sample Template"), menu));
    const auto addButton = [&](const QString& title, auto action) {
        auto* button = new QPushButton(title);
        connect(button, &QPushButton::clicked, this, action);
        section.addRow(button);
    };
    addButton(text("Export Template…"), [this] { model_.exportTemplate(); });
    addButton(text("Import Template…"), [this] { model_.importTemplate(); });
}

QWidget* TemplateSettings::addNumber(Section& section, const QString& title, Binding<double> binding) {
    auto* number = controls_.number(title, text("mm"), std::move(binding));
    section.addRow(title, number);
    return number;
}

}  // namespace quorvel
