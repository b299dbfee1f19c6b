#pragma once

#include "Model/AppModel.h"

#include <QObject>
#include <vector>

class QAction;
class QMenu;

namespace quorvel {

/// The four exports, as commands that stand in the menu bar and in the toolbar.
class ExportCommands : public QObject {
    Q_OBJECT
public:
    ExportCommands(AppModel& model, QObject* parent);

    void addTo(QMenu& menu) const;
    void setEnabled(bool enabled);

private:
    std::vector<QAction*> actions_;
};

}  // namespace quorvel
