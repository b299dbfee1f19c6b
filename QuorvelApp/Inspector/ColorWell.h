#pragma once

#include "Foundation/RGBA.h"

#include <QAbstractButton>
#include <QPointer>

class QColorDialog;

namespace quorvel {

/// A colour to look at and to press on: it opens the colour dialog beside the window, where every colour that is chosen
/// counts at once. There is one such dialog at a time; it goes when the well is hidden.
class ColorWell : public QAbstractButton {
    Q_OBJECT
public:
    enum class Opacity { none, offered };

    /// `title` is the accessible name, and that of the dialog.
    ColorWell(const QString& title, Opacity opacity, QWidget* parent = nullptr);
    ~ColorWell() override;

    /// Shows the model's colour, in the dialog too.
    void setColor(const RGBA& color);
    const RGBA& color() const { return color_; }

    /// For owners whose colour became that of another thing.
    void closeDialog();

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has chosen another colour; without `Opacity::offered` an opaque one. The well must outlive the signal.
    void colorPicked(const RGBA& color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void openDialog();
    void pick(const QColor& color);

    Opacity opacity_;
    RGBA color_;
    QPointer<QColorDialog> dialog_;
};

}  // namespace quorvel
