#pragma once

#include "Model/AppModel.h"

#include <QScrollArea>

namespace quorvel {

/// What to do first in a deck without a spreadsheet: which columns are understood, and the way to choose a file.
class NoSpreadsheetView : public QScrollArea {
    Q_OBJECT
public:
    explicit NoSpreadsheetView(AppModel& model, QWidget* parent = nullptr);

private:
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
