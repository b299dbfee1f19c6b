#include "SheetsTab/PrintForm.h"

#include "Controls/NumberField.h"
#include "Controls/Picker.h"
#include "Controls/Style.h"
#include "Controls/WarningLabel.h"
#include "Controls/Wording.h"
#include "Controls/WrappingCheckBox.h"
#include "Rendering/CardImage.h"
#include "SheetsTab/SheetSummary.h"

#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <limits>

namespace quorvel {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

QLabel* makeSecondaryLabel() {
    auto* label = new QLabel;
    label->setWordWrap(true);
    Style::makeSecondary(label);
    return label;
}

QString summaryText(const SheetSummary& summary) {
    return text("%1 cards a page (%2 × %3, %4): %5 pages for %6 cards.")
        .arg(summary.columns * summary.rows)
        .arg(summary.columns)
        .arg(summary.rows)
        .arg(summary.landscape ? text("landscape") : text("portrait"))
        .arg(summary.pages)
        .arg(summary.cards);
}

QString imageSizeText(const DeckProject& project) {
    const auto bleed = project.imageBleed ? CardImage::Bleed::included : CardImage::Bleed::none;
    const CardImage::PixelSize size = CardImage::pixelSize(project.template_, bleed, double(project.imageDPI));
    return text("Each card: %1 × %2 pixels.").arg(size.width).arg(size.height);
}

}  // namespace

PrintForm::PrintForm(AppModel& model, QWidget* parent) : GroupedForm(parent), model_(model) {
    addPaper();
    addLayout();
    addBacks();
    addImages();
    addExports();
    refresh();
}

void PrintForm::refresh() {
    const DeckProject* current = model_.currentProject();
    DeckProject shown = current ? *current : DeckProject{};
    if (!current) shown.template_ = model_.template_();
    for (const auto& show : shows_) show(shown);
    widget()->setEnabled(current != nullptr);
}

void PrintForm::dropTyping() {
    for (NumberField* number : numbers_) number->restore();
}

// Sections

void PrintForm::addPaper() {
    Section section = addSection(text("Paper"));
    addPicker<Paper>(section, text("Paper"), {{Paper::letter, text("US Letter")}, {Paper::a4, text("A4")}},
                     [](DeckProject& project) -> Paper& { return project.sheet.paper; });
    addPicker<Orientation>(section, text("Orientation"),
                           {{Orientation::auto_, text("Most cards per page")},
                            {Orientation::portrait, text("Portrait")},
                            {Orientation::landscape, text("Landscape")}},
                           [](DeckProject& project) -> Orientation& { return project.sheet.orientation; });
    addNumber(section, text("Margins"), {0, 40},
              [](DeckProject& project) -> double& { return project.sheet.marginMM; });
}

void PrintForm::addLayout() {
    Section section = addSection(text("Layout"));
    addPicker<Spacing>(section, text("Cards"),
                       {{Spacing::butted, text("Touching (one cut between cards)")},
                        {Spacing::separated, text("Apart (each with its own bleed)")}},
                       [](DeckProject& project) -> Spacing& { return project.sheet.spacing; });
    QWidget* gap = addNumber(section, text("Gap"), {0, 30},
                             [](DeckProject& project) -> double& { return project.sheet.gutterMM; });
    addCheckBox(section, text("Print the bleed"),
                [](DeckProject& project) -> bool& { return project.sheet.includeBleed; });
    addCheckBox(section, text("Cut marks"), [](DeckProject& project) -> bool& { return project.sheet.cutMarks; });

    QLabel* line = makeSecondaryLabel();
    section.addRow(line);
    QWidget* tooBig = new WarningLabel(text("The card doesn’t fit inside the margins on this paper."));
    section.addRow(tooBig);
    section.setFooter(
        text("Copies follow the quantity column. Touching cards fit the most per page; apart cards are easier to cut "
             "cleanly."));

    shows_.push_back([this, section, gap, line, tooBig](DeckProject& project) mutable {
        section.setRowVisible(gap, project.sheet.spacing == Spacing::separated);
        const auto summary = SheetSummary::make(project.template_, project.sheet, *model_.state().open._deck);
        if (summary) line->setText(summaryText(*summary));
        section.setRowVisible(line, summary.has_value());
        section.setRowVisible(tooBig, !summary);
    });
}

void PrintForm::addBacks() {
    Section section = addSection(text("Backs"));
    addCheckBox(section, text("Double-sided: a back page after each front"),
                [](DeckProject& project) -> bool& { return project.sheet.duplex; });
    const std::vector<QWidget*> whileDuplex{
        addPicker<DuplexFlip>(section, text("Flip on"),
                              {{DuplexFlip::longEdge, text("Long edge")}, {DuplexFlip::shortEdge, text("Short edge")}},
                              [](DeckProject& project) -> DuplexFlip& { return project.sheet.flip; }),
        addNumber(section, text("Back offset right"), {-infinity, infinity},
                  [](DeckProject& project) -> double& { return project.sheet.backOffsetXMM; }),
        addNumber(section, text("Back offset down"), {-infinity, infinity},
                  [](DeckProject& project) -> double& { return project.sheet.backOffsetYMM; }),
        addButton(section, text("Print a Calibration Page…"), [this] { model_.saveCalibrationPage(); }),
    };
    section.setFooter(
        text("Most printers shift the back a little. Print the calibration page double-sided, hold it to a light, and "
             "enter how far the back’s cross sits from the front’s centre (left and up are negative)."));

    shows_.push_back([section, whileDuplex](DeckProject& project) mutable {
        for (QWidget* row : whileDuplex) section.setRowVisible(row, project.sheet.duplex);
    });
}

void PrintForm::addImages() {
    Section section = addSection(text("Card images (PNG)"));
    addCheckBox(section, text("Include the bleed"), [](DeckProject& project) -> bool& { return project.imageBleed; });
    addPicker<std::int64_t>(section, text("Resolution"), {{300, text("300 dpi")}, {600, text("600 dpi")}},
                            [](DeckProject& project) -> std::int64_t& { return project.imageDPI; });
    QLabel* size = makeSecondaryLabel();
    section.addRow(size);
    shows_.push_back([size](DeckProject& project) { size->setText(imageSizeText(project)); });
}

void PrintForm::addExports() {
    Section section = addSection(text("Export"));
    addButton(section, text("Export Print Sheets (PDF)…"), [this] { model_.export_(ExportKind::sheets); });
    addButton(section, text("Export Card Images (PNG)…"), [this] { model_.export_(ExportKind::images); });
    addButton(section, text("Export for Tabletop Simulator…"), [this] { model_.export_(ExportKind::tts); });
}

// Rows. Their signals speak of the user's own changes only, so that showing a value never writes it.

template <class Value>
QWidget* PrintForm::addPicker(Section& section, const QString& title, const Options<Value>& options,
                              Place<Value> place) {
    auto* picker = new Picker(title);
    for (const auto& [value, name] : options) picker->addItem(name);
    // All as wide as each other, one below the other; but for one whose entries would be cut.
    const int room = picker->sizeHint().width() - 2 * Style::large - Style::small;
    const QFontMetrics metrics = picker->fontMetrics();
    if (std::ranges::all_of(options, [&](const auto& each) { return metrics.horizontalAdvance(each.second) <= room; }))
        picker->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    section.addRow(title, picker);
    connect(picker, &QComboBox::activated, this,
            [this, options, place](int index) { write(place, options[std::size_t(index)].first); });
    shows_.push_back([picker, options, place](DeckProject& project) {
        const auto found = std::ranges::find(options, place(project), &std::pair<Value, QString>::first);
        picker->setCurrentIndex(found == options.end() ? -1 : int(found - options.begin()));
    });
    return picker;
}

QWidget* PrintForm::addNumber(Section& section, const QString& title, Range range, Place<double> place) {
    auto* number = new NumberField(title, text("mm"));
    section.addRow(title, number);
    connect(number, &NumberField::valueEdited, this,
            [this, range, place](double value) { write(place, std::clamp(value, range.least, range.most)); });
    shows_.push_back([number, place](DeckProject& project) { number->setValue(place(project)); });
    numbers_.push_back(number);
    return number;
}

QWidget* PrintForm::addCheckBox(Section& section, const QString& title, Place<bool> place) {
    auto* box = new WrappingCheckBox(title);
    section.addRow(box);
    connect(box, &QCheckBox::clicked, this, [this, place](bool checked) { write(place, checked); });
    shows_.push_back([box, place](DeckProject& project) { box->setChecked(place(project)); });
    return box;
}

QWidget* PrintForm::addButton(Section& section, const QString& title, std::function<void()> action) {
    auto* button = new QPushButton(title);
    section.addRow(button);
    connect(button, &QPushButton::clicked, this, std::move(action));
    return button;
}

template <class Value>
void PrintForm::write(Place<Value> place, Value value) {
    if (const DeckProject* current = model_.currentProject()) {
        DeckProject changed = *current;
        place(changed) = value;
        model_.updateProject(std::move(changed));
    }
    // The model may have refused it, and then announces nothing.
    refresh();
}

}  // namespace quorvel
