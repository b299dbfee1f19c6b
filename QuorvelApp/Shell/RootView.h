#pragma once

#include "Model/AppModel.h"

#include <QSplitter>

namespace quorvel {

/// Everything inside the window: the sidebar of decks and what is open of one of them.
class RootView : public QSplitter {
    Q_OBJECT
public:
    explicit RootView(AppModel& model, QWidget* parent = nullptr);
};

}  // namespace quorvel
