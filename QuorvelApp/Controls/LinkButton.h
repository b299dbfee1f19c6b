#pragma once

#include <QAbstractButton>

namespace quorvel {

/// A button that looks like a link: for what goes on from a sentence.
class LinkButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit LinkButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
};

}  // namespace quorvel
