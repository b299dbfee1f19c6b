#pragma once

#include "Model/AppModel.h"

#include <QWidget>

class QListWidget;
class QListWidgetItem;

namespace quorvel {

/// The sidebar: all decks, of which one is open. Reads the model and calls its operations.
class DeckList : public QWidget {
    Q_OBJECT
public:
    static constexpr int narrowest = 190;
    static constexpr int ideal = 220;
    static constexpr int widest = 300;

    explicit DeckList(AppModel& model, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void refresh(Changes changes);
    void showDecks();
    void showSelection();
    void openSelected();

    /// The deck of a row; null when the row shows a deck that has gone.
    const DeckProject* deck(const QListWidgetItem* row) const;
    void showMenu(QPoint place);
    void askForName(const DeckProject& deck);
    void askBeforeDeleting(const DeckProject& deck);

    AppModel& model_;
    QListWidget* rows_ = nullptr;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
