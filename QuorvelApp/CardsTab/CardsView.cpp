#include "CardsTab/CardsView.h"

#include "CardsTab/CardsColumn.h"
#include "CardsTab/LoadingView.h"
#include "CardsTab/NoSpreadsheetView.h"
#include "Controls/EmptyState.h"
#include "Controls/ScreenReader.h"
#include "Controls/Wording.h"

namespace quorvel {

CardsView::CardsView(AppModel& model, QWidget* parent) : QStackedWidget(parent), model_(model) {
    noSpreadsheet_ = new NoSpreadsheetView(model, this);
    error_ = new EmptyState(QStringLiteral("exclamationmark.triangle"),
                            QStringLiteral("The spreadsheet couldn’t be opened"), this);
    ScreenReader::makeAlert(error_);
    error_->setAccessibleName(QStringLiteral("The spreadsheet couldn’t be opened"));
    error_->setAction(QStringLiteral("Choose Spreadsheet…"));
    connect(error_, &EmptyState::activated, this, [this] { model_.chooseSpreadsheet(); });
    loading_ = new LoadingView(this);
    noCards_ = new EmptyState(QStringLiteral("rectangle.portrait.slash"), QStringLiteral("No cards yet"), this);
    noCards_->setDescription(
        QStringLiteral("The spreadsheet has headers but no rows. Add a row for each card and save: the preview updates "
                       "by itself."));
    cards_ = new CardsColumn(model, this);
    for (const CardsScreen screen : {CardsScreen::noSpreadsheet, CardsScreen::error, CardsScreen::loading,
                                     CardsScreen::noCards, CardsScreen::cards})
        addWidget(page(screen));

    Changes all;
    for (const Change change : {Change::decks, Change::selection, Change::openDeck, Change::thumbnails})
        all.add(change);
    refresh(all);
    subscription_ = model.subscribe([this](Changes changes) { refresh(changes); });
}

QWidget* CardsView::page(CardsScreen screen) const {
    switch (screen) {
        case CardsScreen::noSpreadsheet:
            return noSpreadsheet_;
        case CardsScreen::error:
            return error_;
        case CardsScreen::loading:
            return loading_;
        case CardsScreen::noCards:
            return noCards_;
        case CardsScreen::cards:
            return cards_;
    }
    return nullptr;
}

void CardsView::showError(const QString& error) {
    error_->setDescription(error);
    error_->setAccessibleDescription(error);
}

void CardsView::refresh(Changes changes) {
    cards_->refresh(changes);
    if (!changes.has(Change::selection) && !changes.has(Change::openDeck) && !changes.has(Change::decks)) return;
    const OpenDeck& open = model_.state().open;
    const DeckProject* const project = model_.currentProject();
    if (open._loadError) showError(text(*open._loadError));
    if (project && project->source) loading_->setFileName(text(project->source->name));
    QWidget* const wanted = page(cardsScreenFor(project, open));
    if (wanted == currentWidget()) return;
    setCurrentWidget(wanted);
    if (wanted == error_) ScreenReader::speak(error_);
}

}  // namespace quorvel
