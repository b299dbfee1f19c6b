#pragma once

#include "Desktop/Desktop.h"
#include "Model/AppModel.h"

#include <QSplitter>

namespace quorvel {

class CardCanvas;

/// The design of the card: its layers, one card of the deck with them, and the properties of what is selected. The card
/// takes the width that the other two leave.
class TemplateEditor : public QSplitter {
    Q_OBJECT
public:
    /// Both outlive it; `desktop` keeps what the canvas remembers.
    TemplateEditor(AppModel& model, Desktop& desktop, QWidget* parent = nullptr);

protected:
    /// The keyboard goes to the card. No focus proxies: the Tab key would take each for a stop.
    void focusInEvent(QFocusEvent* event) override;

private:
    CardCanvas* canvas_ = nullptr;
};

}  // namespace quorvel
