#include "Shell/ErrorAlert.h"

#include "Controls/Wording.h"
#include "Shell/Alert.h"

namespace quorvel {

ErrorAlert::ErrorAlert(AppModel& model, QWidget* window) : QObject(window), model_(model), window_(window) {
    subscription_ = model_.subscribe([this](Changes changes) {
        if (changes.has(Change::status)) refresh();
    });
    refresh();
}

void ErrorAlert::refresh() {
    const auto& error = model_.state()._error;
    if (!error) {
        if (alert_) alert_->close();
        return;
    }
    if (alert_) return alert_->setInformation(text(*error));
    alert_ = new Alert("Something went wrong", text(*error), window_);
    alert_->addButton("OK", QDialogButtonBox::AcceptRole, Alert::Answer::default_);
    connect(alert_, &QDialog::finished, this, [this] {
        // Forgotten before the model is told: a new error is a new alert.
        alert_ = nullptr;
        model_.clearError();
    });
    alert_->open();
}

}  // namespace quorvel
