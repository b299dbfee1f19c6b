#pragma once

#include <QCheckBox>

namespace quorvel {

/// A check box whose title goes on in another line where the form is too narrow for it.
class WrappingCheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit WrappingCheckBox(const QString& title, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// What the title takes at this width of its own.
    QSize titleSize(int width) const;
    /// What stands beside the title.
    int boxWidth() const;
};

}  // namespace quorvel
