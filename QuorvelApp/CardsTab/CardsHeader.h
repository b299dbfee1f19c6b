#pragma once

#include "Model/AppModel.h"

#include <QWidget>

class QLabel;

namespace quorvel {

/// How many cards there are, where they come from, and the way to paper.
class CardsHeader : public QWidget {
    Q_OBJECT
public:
    explicit CardsHeader(AppModel& model, QWidget* parent = nullptr);

    /// Shows what the model has now.
    void refresh();

    /// "12 cards, 30 with copies".
    static QString title(const Deck& deck);
    /// Where the cards were read and when; empty before the first load or without a spreadsheet.
    static QString origin(const DeckProject& project, const OpenDeck& open);

private:
    AppModel& model_;
    QLabel* title_ = nullptr;
    QLabel* origin_ = nullptr;
};

}  // namespace quorvel
