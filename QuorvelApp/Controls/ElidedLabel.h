#pragma once

#include <QWidget>

namespace quorvel {

/// One line of text, cut where told when there isn't the room, with the whole of it as the tooltip then.
class ElidedLabel : public QWidget {
    Q_OBJECT
public:
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

    void setText(const QString& text);
    QString text() const { return text_; }

    /// Invalid means that of the palette's window text.
    void setColor(const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showWholeWhenCut();

    Qt::TextElideMode mode_;
    QString text_;
    QColor color_;
};

}  // namespace quorvel
