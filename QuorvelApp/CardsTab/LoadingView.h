#pragma once

#include <QWidget>

class QLabel;
class QTimer;

namespace quorvel {

/// An empty page that says after a moment that something is being read: most loads are over before.
class LoadingView : public QWidget {
    Q_OBJECT
public:
    static constexpr int moment = 300;  ///< ms

    explicit LoadingView(QWidget* parent = nullptr);

    void setFileName(const QString& name);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* sign_ = nullptr;
    QLabel* words_ = nullptr;
    QTimer* timer_ = nullptr;
};

}  // namespace quorvel
