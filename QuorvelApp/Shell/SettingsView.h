#pragma once

#include "Desktop/Desktop.h"

#include <QDialog>
#include <QStringList>

class QButtonGroup;
class QStackedWidget;

namespace quorvel {

/// The settings window. It opens with the pane that was shown last.
class SettingsView : public QDialog {
    Q_OBJECT
public:
    /// `desktop` outlives it.
    explicit SettingsView(Desktop& desktop, QWidget* parent = nullptr);

private:
    void addPane(const QString& tag, const QString& symbol, const QString& name, QWidget* pane);
    void showPane(int index);

    Desktop& desktop_;
    QStringList tags_;
    QButtonGroup* buttons_ = nullptr;
    QWidget* bar_ = nullptr;
    QStackedWidget* panes_ = nullptr;
};

}  // namespace quorvel
