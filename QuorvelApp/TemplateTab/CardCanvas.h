#pragma once

#include "Desktop/Desktop.h"
#include "Model/AppModel.h"

#include <QWidget>

namespace quorvel {

class CardBar;
class CardSurface;

/// The middle column: which card, the card itself, and what is drawn over it. Whether guides and outlines are shown is
/// kept between runs.
class CardCanvas : public QWidget {
    Q_OBJECT
public:
    static constexpr int narrowest = 380;

    /// Both outlive it; `desktop` keeps the two settings.
    CardCanvas(AppModel& model, Desktop& desktop, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    /// The keyboard goes to the card.
    void focusInEvent(QFocusEvent* event) override;

private:
    QWidget* makeOptions(Desktop& desktop);
    void refresh(Changes changes);

    AppModel& model_;
    CardBar* bar_ = nullptr;
    CardSurface* surface_ = nullptr;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
