#pragma once

#include "CardsTab/CardsScreen.h"
#include "Model/AppModel.h"

#include <QStackedWidget>

namespace quorvel {

class CardsColumn;
class EmptyState;
class LoadingView;
class NoSpreadsheetView;

/// The cards as a grid, and what is wrong with the data. Reads the model and calls its operations; keeps no state of
/// its own.
class CardsView : public QStackedWidget {
    Q_OBJECT
public:
    explicit CardsView(AppModel& model, QWidget* parent = nullptr);

private:
    /// Shows what the model has now.
    void refresh(Changes changes);
    void showError(const QString& error);
    QWidget* page(CardsScreen screen) const;

    AppModel& model_;
    NoSpreadsheetView* noSpreadsheet_ = nullptr;
    EmptyState* error_ = nullptr;
    LoadingView* loading_ = nullptr;
    EmptyState* noCards_ = nullptr;
    CardsColumn* cards_ = nullptr;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
