#pragma once

#include "Controls/GroupedForm.h"
#include "Model/AppModel.h"

#include <functional>
#include <utility>
#include <vector>

namespace quorvel {

class NumberField;

/// Everything about paper, imposition, backs and the images of an export. Each row shows one field of the open deck's
/// record and writes it through the model. Without a deck the rows show the defaults and rest.
class PrintForm : public GroupedForm {
    Q_OBJECT
public:
    explicit PrintForm(AppModel& model, QWidget* parent = nullptr);

    /// Shows what the record has now.
    void refresh();

    /// Forgets numbers that are typed but not stored.
    void dropTyping();

private:
    /// Where a row's value lives in the record.
    template <class Value>
    using Place = Value& (*)(DeckProject&);

    template <class Value>
    using Options = std::vector<std::pair<Value, QString>>;

    /// The numbers that a row stores; a typed one beyond them becomes the nearest.
    struct Range {
        double least;
        double most;
    };

    void addPaper();
    void addLayout();
    void addBacks();
    void addImages();
    void addExports();

    template <class Value>
    QWidget* addPicker(Section& section, const QString& title, const Options<Value>& options, Place<Value> place);
    QWidget* addNumber(Section& section, const QString& title, Range range, Place<double> place);
    QWidget* addCheckBox(Section& section, const QString& title, Place<bool> place);
    QWidget* addButton(Section& section, const QString& title, std::function<void()> action);

    template <class Value>
    void write(Place<Value> place, Value value);

    AppModel& model_;
    std::vector<std::function<void(DeckProject&)>> shows_;  ///< each shows its part of a record
    std::vector<NumberField*> numbers_;
};

}  // namespace quorvel
