#pragma once

#include <QPushButton>

namespace quorvel {

/// A button with words that opens a menu. Where it is too narrow for its words they go on in another line.
class MenuButton : public QPushButton {
    Q_OBJECT
public:
    MenuButton(const QString& title, QMenu* menu, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// What the words take at this width of their own.
    QSize titleSize(int width) const;
};

}  // namespace quorvel
