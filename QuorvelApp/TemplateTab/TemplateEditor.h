#pragma once

#include "Model/AppModel.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace quorvel {

class CardPicture;

/// The design of the card: one card of the deck, large, and which. Reads the model and calls its operations; keeps no
/// state of its own.
class TemplateEditor : public QWidget {
    Q_OBJECT
public:
    explicit TemplateEditor(AppModel& model, QWidget* parent = nullptr);

private:
    /// Shows what the model has now.
    void refresh(Changes changes);
    void showCard();

    AppModel& model_;
    CardPicture* picture_ = nullptr;
    QWidget* chooser_ = nullptr;
    QToolButton* previous_ = nullptr;
    QToolButton* next_ = nullptr;
    QLabel* which_ = nullptr;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
