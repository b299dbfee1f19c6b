#pragma once

#include <QWidget>

namespace quorvel {

/// A rounded panel behind its children in the secondary colour, thin.
class TintedPanel : public QWidget {
    Q_OBJECT
public:
    /// `opacity` from 0 to 1.
    explicit TintedPanel(double opacity, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double opacity_;
};

}  // namespace quorvel
