#include "Shell/ExportCommands.h"

#include <QAction>
#include <QMenu>

namespace quorvel {

ExportCommands::ExportCommands(AppModel& model, QObject* parent) : QObject(parent) {
    const auto add = [&](const QString& words, const QKeySequence& keys, auto act) {
        auto* action = new QAction(words, this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, act);
        actions_.push_back(action);
    };
    add("Print Sheets (PDF)…", Qt::CTRL | Qt::Key_E, [&model] { model.export_(ExportKind::sheets); });
    add("Card Images (PNG)…", Qt::CTRL | Qt::SHIFT | Qt::Key_E, [&model] { model.export_(ExportKind::images); });
    add("Tabletop Simulator Deck Sheet…", {}, [&model] { model.export_(ExportKind::tts); });
    add("Duplex Calibration Page…", {}, [&model] { model.saveCalibrationPage(); });
}

void ExportCommands::addTo(QMenu& menu) const {
    for (QAction* action : actions_) {
        if (action == actions_.back()) menu.addSeparator();
        menu.addAction(action);
    }
}

void ExportCommands::setEnabled(bool enabled) {
    for (QAction* action : actions_) action->setEnabled(enabled);
}

}  // namespace quorvel
