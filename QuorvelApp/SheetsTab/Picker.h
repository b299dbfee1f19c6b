#pragma once

#include <QComboBox>

namespace quorvel {

/// A picker in a form: where the form is narrow it cuts its text, not its list. It is deaf to the wheel even while it
/// has the keyboard, since a user who has just chosen goes on to scroll.
class Picker : public QComboBox {
    Q_OBJECT
public:
    explicit Picker(const QString& title, QWidget* parent = nullptr);

    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace quorvel
