#pragma once

#include "Model/AppModel.h"

#include <QPixmap>
#include <QString>
#include <QWidget>

class QGraphicsOpacityEffect;
class QProgressBar;
class QVariantAnimation;

namespace quorvel {

class ElidedLabel;
class Spinner;
class SymbolLabel;

/// What goes on and what has just happened, in a few words over the bottom edge of its parent. It comes and goes
/// softly, takes no clicks, and is read out by screen readers when it changes.
class StatusBanner : public QWidget {
    Q_OBJECT
public:
    static constexpr int distance = 14;   ///< from the parent's edges
    static constexpr int fadeTime = 200;  ///< in milliseconds

    StatusBanner(AppModel& model, QWidget* parent);

    /// From 0, unseen, to 1.
    double opacity() const { return opacity_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// What is said, and whether it is still going on. Nothing is said with an empty text.
    struct Message {
        QString text;
        bool busy = false;

        bool operator==(const Message&) const = default;
    };

    void refresh(Changes changes);
    void say(const Message& message);
    void show(const Message& message);
    void showProgress();
    QRect place() const;
    void move(double part);

    AppModel& model_;
    Message message_;

    QWidget* content_ = nullptr;
    Spinner* spinner_ = nullptr;
    SymbolLabel* check_ = nullptr;
    ElidedLabel* words_ = nullptr;
    QProgressBar* progress_ = nullptr;

    QVariantAnimation* fade_ = nullptr;
    QGraphicsOpacityEffect* contentOpacity_ = nullptr;
    double opacity_ = 0;
    double from_ = 0;  ///< the opacity where the fade began
    QPixmap last_;     ///< what was said before the fade
    QRect lastPlace_;  ///< where that was
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
