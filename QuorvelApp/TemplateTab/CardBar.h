#pragma once

#include "Model/AppModel.h"

#include <QWidget>

namespace quorvel {

class ElidedLabel;
class SidePicker;
class SymbolButton;

/// Which card is on the canvas, and which side of it.
class CardBar : public QWidget {
    Q_OBJECT
public:
    /// The model outlives it.
    explicit CardBar(AppModel& model, QWidget* parent = nullptr);

    /// Shows what the model has now.
    void refresh();

protected:
    void changeEvent(QEvent* event) override;

private:
    std::int64_t cardCount() const;
    void previousCard();
    void nextCard();

    AppModel& model_;
    SymbolButton* previous_ = nullptr;
    ElidedLabel* caption_ = nullptr;
    SymbolButton* next_ = nullptr;
    SidePicker* side_ = nullptr;
};

}  // namespace quorvel
