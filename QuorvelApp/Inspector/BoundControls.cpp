#include "Inspector/BoundControls.h"

#include "Controls/NumberField.h"
#include "Controls/Picker.h"
#include "Controls/Wording.h"
#include "Inspector/ContentEditor.h"
#include "Inspector/OpacitySlider.h"
#include "Inspector/OptionalColor.h"
#include "Inspector/TextField.h"

#include <QCheckBox>

namespace quorvel {

TextField* BoundControls::text(const QString& title, Binding<std::string> binding) {
    auto* field = new TextField(title);
    QObject::connect(field, &QLineEdit::textChanged, field,
                     [write = binding.write](const QString& typed) { write(typed.toStdString()); });
    onRefresh([field, read = binding.read] { field->setShown(quorvel::text(read())); });
    return field;
}

ContentEditor* BoundControls::content(Binding<std::string> binding) {
    auto* editor = new ContentEditor;
    QObject::connect(editor, &ContentEditor::contentEdited, editor,
                     [write = binding.write](const QString& typed) { write(typed.toStdString()); });
    onRefresh([editor, read = binding.read] { editor->setShown(quorvel::text(read())); });
    onLetGo([editor] { editor->moveCursor(QTextCursor::Start); });
    return editor;
}

NumberField* BoundControls::number(const QString& title, const QString& unit, Binding<double> binding) {
    auto* field = new NumberField(title, unit);
    QObject::connect(field, &NumberField::valueEdited, field, [write = binding.write](double value) { write(value); });
    onRefresh([field, read = binding.read] { field->setValue(read()); });
    onLetGo([field] { field->restore(); });
    return field;
}

QCheckBox* BoundControls::checkBox(const QString& title, Binding<bool> binding) {
    auto* box = new QCheckBox(title);
    QObject::connect(box, &QCheckBox::clicked, box, [write = binding.write](bool checked) { write(checked); });
    onRefresh([box, read = binding.read] { box->setChecked(read()); });
    return box;
}

OpacitySlider* BoundControls::opacity(const QString& title, Binding<double> binding) {
    auto* slider = new OpacitySlider(title);
    QObject::connect(slider, &OpacitySlider::opacityEdited, slider,
                     [write = binding.write](double value) { write(value); });
    onRefresh([slider, read = binding.read] { slider->setOpacity(read()); });
    onLetGo([slider] { slider->letGo(); });
    return slider;
}

ColorWell* BoundControls::color(const QString& title, ColorWell::Opacity opacity, Binding<RGBA> binding) {
    auto* well = new ColorWell(title, opacity);
    QObject::connect(well, &ColorWell::colorPicked, well, [write = binding.write](const RGBA& color) { write(color); });
    onRefresh([well, read = binding.read] { well->setColor(read()); });
    onLetGo([well] { well->closeDialog(); });
    return well;
}

OptionalColor* BoundControls::optionalColor(const QString& title, const RGBA& fallback,
                                            Binding<std::optional<RGBA>> binding) {
    auto* color = new OptionalColor(title, fallback);
    QObject::connect(color, &OptionalColor::valuePicked, color,
                     [write = binding.write](const std::optional<RGBA>& value) { write(value); });
    onRefresh([color, read = binding.read] { color->setValue(read()); });
    onLetGo([color] { color->closeDialog(); });
    return color;
}

Picker* BoundControls::picker(const QString& title, const QStringList& options, Binding<int> binding, Missing missing) {
    auto* picker = new Picker(title);
    picker->addItems(options);
    QObject::connect(picker, &QComboBox::activated, picker, [write = binding.write](int index) { write(index); });
    onRefresh([picker, read = binding.read, missing = std::move(missing)] {
        const int index = read();
        picker->show(index, index < 0 && missing ? missing() : QString());
    });
    onLetGo([picker] { picker->hidePopup(); });
    return picker;
}

SegmentedPicker* BoundControls::segments(const QString& title, const QList<SegmentedPicker::Segment>& segments,
                                         Binding<int> binding) {
    auto* picker = new SegmentedPicker(title, segments);
    // Where the form is narrow its segments move closer.
    picker->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    QObject::connect(picker, &SegmentedPicker::activated, picker, [write = binding.write](int index) { write(index); });
    onRefresh([picker, read = binding.read] { picker->setCurrentIndex(read()); });
    return picker;
}

void BoundControls::refresh() {
    for (const auto& show : shows_) show();
}

void BoundControls::letGo() {
    for (const auto& letGo : letsGo_) letGo();
}

}  // namespace quorvel
