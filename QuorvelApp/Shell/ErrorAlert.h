#pragma once

#include "Model/AppModel.h"

#include <QObject>
#include <QPointer>

namespace quorvel {

class Alert;

/// Shows the model's error over the window until the user has read it.
class ErrorAlert : public QObject {
    Q_OBJECT
public:
    ErrorAlert(AppModel& model, QWidget* window);

private:
    void refresh();

    AppModel& model_;
    QWidget* window_;
    QPointer<Alert> alert_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
