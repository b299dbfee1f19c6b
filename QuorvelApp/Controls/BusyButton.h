#pragma once

#include <QPushButton>

namespace quorvel {

class Spinner;

/// A button for what takes a moment. While it is busy a spinner stands in the place of its words, and it can't be
/// pressed; its size and its name stay.
class BusyButton : public QPushButton {
    Q_OBJECT
public:
    explicit BusyButton(const QString& words, QWidget* parent = nullptr);

    void setBusy(bool busy);
    bool isBusy() const { return busy_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    Spinner* spinner_ = nullptr;
    bool busy_ = false;
};

}  // namespace quorvel
