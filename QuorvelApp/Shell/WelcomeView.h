#pragma once

#include "Model/AppModel.h"

#include <QWidget>

namespace quorvel {

/// What stands where a deck would be while none is open: what the program is for, and the three ways to begin.
class WelcomeView : public QWidget {
    Q_OBJECT
public:
    explicit WelcomeView(AppModel& model, QWidget* parent = nullptr);

private:
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
