#include "Inspector/LayerInspector.h"

#include "Controls/NumberField.h"
#include "Controls/Picker.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/Wording.h"
#include "Inspector/ContentBlock.h"
#include "Inspector/FontList.h"
#include "Inspector/LayerKinds.h"
#include "Inspector/OpacitySlider.h"
#include "Inspector/OptionalColor.h"
#include "Inspector/TextField.h"
#include "Pictures/IconSet.h"
#include "Templates/TemplateEdits.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <utility>

namespace quorvel {

namespace {

const QString millimetres = QStringLiteral("mm");
const QString points = QStringLiteral("pt");

constexpr int kindSymbolSize = 18;

QWidget* makeKindRow(LayerKind kind) {
    auto* whole = new QWidget;
    auto* row = new QHBoxLayout(whole);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::small);
    row->addWidget(new SymbolLabel(LayerKinds::symbol(kind), kindSymbolSize, &Style::secondary));
    row->addWidget(new QLabel(text(LayerKinds::label(kind))));
    return whole;
}

QString iconRowFooter() {
    QString names;
    for (const std::string_view name : IconSet::names) names += (names.isEmpty() ? QString() : text(", ")) + text(name);
    return text("`{{icons}}`, or names: “coin, coin, star”, “2 leaf”. Built in: ") + names +
           text(". Pictures in the icons folder (coin.png) replace them.");
}

}  // namespace

LayerInspector::LayerInspector(AppModel& model, LayerKind kind, QWidget* parent) : GroupedForm(parent), model_(model) {
    addLayer(kind);
    addPosition();
    switch (kind) {
        case LayerKind::text:
            addText();
            addFont();
            addBox();
            break;
        case LayerKind::image:
            addPicture();
            break;
        case LayerKind::shape:
            addShape();
            break;
        case LayerKind::icons:
            addIconRow();
            break;
    }
    addRules(kind);
}

void LayerInspector::refresh() {
    controls_.refresh();
    rules_->refresh();
}

void LayerInspector::letGo() {
    controls_.letGo();
    rules_->letGo();
}

// The layer

const Layer* LayerInspector::layer() const {
    return TemplateEdits::find(model_.template_(), model_.state()._side, id_);
}

template <class Value>
Binding<Value> LayerInspector::field(Value Layer::* place) {
    return {[this, place] {
                const Layer* shown = layer();
                return shown ? shown->*place : Layer().*place;
            },
            [this, place](Value value) { change([&](Layer& changed) { changed.*place = std::move(value); }); }};
}

template <class Part, class Value>
Binding<Value> LayerInspector::field(Part Layer::* part, Value Part::* place) {
    return {
        [this, part, place] {
            const Layer* shown = layer();
            return shown ? shown->*part.*place : Layer().*part.*place;
        },
        [this, part, place](Value value) { change([&](Layer& changed) { changed.*part.*place = std::move(value); }); }};
}

void LayerInspector::change(const std::function<void(Layer&)>& edit) {
    if (const Layer* current = layer()) {
        Layer changed = *current;
        edit(changed);
        model_.updateLayer(changed);
    }
    // The model may have refused it, and then announces nothing.
    refresh();
}

// Sections

void LayerInspector::addLayer(LayerKind kind) {
    Section section = addSection(text("Layer"));
    section.addRow(text("Name"), controls_.text(text("Name"), field(&Layer::name)));
    section.addRow(text("Kind"), makeKindRow(kind));
    addCheckBox(section, text("Hidden"), field(&Layer::hidden));
    section.addRow(text("Opacity"), controls_.opacity(text("Opacity"), field(&Layer::opacity)));
}

void LayerInspector::addPosition() {
    Section section = addSection(text("Position and size"));
    addNumber(section, text("Left"), millimetres, field(&Layer::frame, &Frame::x));
    addNumber(section, text("Top"), millimetres, field(&Layer::frame, &Frame::y));
    addNumber(section, text("Width"), millimetres, field(&Layer::frame, &Frame::width));
    addNumber(section, text("Height"), millimetres, field(&Layer::frame, &Frame::height));
}

void LayerInspector::addText() {
    Section section = addSection(text("Text"));
    addContent(section, true);
    section.setFooter(
        text("`{{title}}` puts in a field or column. In the text and in cells: `**bold**`, `*italic*`, "
             "`{icon:coin}`."));
}

void LayerInspector::addFont() {
    Section section = addSection(text("Font"));
    addFontFamily(section);
    addNumber(section, text("Size"), points, field(&Layer::style, &TextStyle::size));
    addCheckBox(section, text("Bold"), field(&Layer::style, &TextStyle::bold));
    addCheckBox(section, text("Italic"), field(&Layer::style, &TextStyle::italic));
    addTextColor(section);
    addAlignment(section);
    addCheckBox(section, text("Shrink to fit the box"), field(&Layer::style, &TextStyle::shrinkToFit));
    addCheckBox(section, text("Icons in their own colours"), field(&Layer::style, &TextStyle::colorfulIcons));
}

void LayerInspector::addBox() {
    Section section = addSection(text("Box"));
    addFill(section, text("Fill"), RGBA::white);
    addLine(section);
    addShapeKind(section);
}

void LayerInspector::addPicture() {
    Section section = addSection(text("Picture"));
    addContent(section, false);
    section.addRow(text("Fit"), controls_.picker(text("Fit"), {text("Fill the box (crop)"), text("Fit inside the box")},
                                                 byIndex(field(&Layer::imageFit))));
    addNumber(section, text("Corner radius"), millimetres, field(&Layer::cornerRadiusMM));
    addFill(section, text("Background"), RGBA(0.85, 0.85, 0.85, 1));
    addLine(section);
    addNumber(section, text("Line width"), points, field(&Layer::strokeWidth));
    section.setFooter(
        text("A path or `{{art}}`. Paths are looked up in the art folder and next to the spreadsheet; PNG, JPEG, HEIC, "
             "TIFF and PDF."));
}

void LayerInspector::addShape() {
    Section section = addSection(text("Shape"));
    addShapeKind(section);
    addNumber(section, text("Corner radius"), millimetres, field(&Layer::cornerRadiusMM));
    addFill(section, text("Fill"), RGBA::white);
    addLine(section);
    addNumber(section, text("Line width"), points, field(&Layer::strokeWidth));
}

void LayerInspector::addIconRow() {
    Section section = addSection(text("Icon row"));
    addContent(section, false);
    addNumber(section, text("Icon size"), millimetres, field(&Layer::iconSizeMM));
    addNumber(section, text("Spacing"), millimetres, field(&Layer::iconSpacingMM));
    addAlignment(section);
    addCheckBox(section, text("Icons in their own colours"), field(&Layer::style, &TextStyle::colorfulIcons));
    addTextColor(section);
    section.setFooter(iconRowFooter());

    Section box = addSection(text("Box"));
    addFill(box, text("Fill"), RGBA::white);
    addLine(box);
}

void LayerInspector::addRules(LayerKind kind) {
    const auto firstType = [this] {
        const std::vector<Card>& cards = model_.state().open._deck->cards;
        return cards.empty() ? std::string() : std::string(cards.front().value("type"));
    };
    const auto update = [this](const Layer& changed) {
        model_.updateLayer(changed);
        refresh();
    };
    rules_ = std::make_unique<RulesSection>(
        *this, kind,
        RulesSection::Actions{[this] { return layer(); }, update, [this] { return model_.knownFieldNames(); },
                              firstType, [this] { orderTabs(); }});
}

// Rows

void LayerInspector::addContent(Section& section, bool offersIcons) {
    section.addRow(new ContentBlock(
        controls_, field(&Layer::content), [this] { return model_.knownFieldNames(); },
        offersIcons ? ContentBlock::Icons::offered : ContentBlock::Icons::none));
}

void LayerInspector::addNumber(Section& section, const QString& title, const QString& unit, Binding<double> binding) {
    section.addRow(title, controls_.number(title, unit, std::move(binding)));
}

void LayerInspector::addCheckBox(Section& section, const QString& title, Binding<bool> binding) {
    section.addRow(controls_.checkBox(title, std::move(binding)));
}

void LayerInspector::addFontFamily(Section& section) {
    std::vector<std::string> families{""};
    families.insert(families.end(), FontList::families().begin(), FontList::families().end());
    QStringList names{text("Helvetica Neue (default)")};
    for (const std::string& family : FontList::families()) names += text(family);
    const Binding<std::string> family = field(&Layer::style, &TextStyle::fontFamily);
    section.addRow(text("Font"), controls_.picker(text("Font"), names, byIndex(std::move(families), family),
                                                  [family] { return text(family.read()); }));
}

void LayerInspector::addTextColor(Section& section) {
    section.addRow(text("Colour"), controls_.color(text("Colour"), ColorWell::Opacity::offered,
                                                   field(&Layer::style, &TextStyle::color)));
}

void LayerInspector::addAlignment(Section& section) {
    section.addRow(text("Align"), controls_.segments(text("Align"),
                                                     {{{}, text("text.alignleft"), text("Left")},
                                                      {{}, text("text.aligncenter"), text("Centre")},
                                                      {{}, text("text.alignright"), text("Right")}},
                                                     byIndex(field(&Layer::style, &TextStyle::align))));
    section.addRow(text("Vertical"),
                   controls_.segments(text("Vertical"),
                                      {{text("Top"), {}, {}}, {text("Middle"), {}, {}}, {text("Bottom"), {}, {}}},
                                      byIndex(field(&Layer::style, &TextStyle::verticalAlign))));
}

void LayerInspector::addShapeKind(Section& section) {
    section.addRow(text("Shape"), controls_.picker(text("Shape"), {text("Rectangle"), text("Ellipse")},
                                                   byIndex(field(&Layer::shape))));
}

void LayerInspector::addFill(Section& section, const QString& title, const RGBA& fallback) {
    section.addRow(controls_.optionalColor(title, fallback, field(&Layer::fill)));
}

void LayerInspector::addLine(Section& section) {
    section.addRow(controls_.optionalColor(text("Line"), RGBA::black, field(&Layer::stroke)));
}

}  // namespace quorvel
