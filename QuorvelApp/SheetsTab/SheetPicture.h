#pragma once

#include "Controls/SoftShadow.h"
#include "Drawing/Image.h"

#include <QImage>
#include <QWidget>
#include <optional>

namespace quorvel {

/// A sheet of paper as large as fits into the contents, with a shadow that may fall beside them; or a sentence while
/// there is none.
class SheetPicture : public QWidget {
    Q_OBJECT
public:
    explicit SheetPicture(QWidget* parent = nullptr);

    /// The picture is stretched to the aspect of `page`, whatever its own is.
    void showSheet(const Image& image, QSizeF page);
    void showText(const QString& text);

    /// Where the paper lies, in the widget's own pixels; empty without a picture.
    QRectF paper() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QImage scaled(QSize pixels);

    std::optional<Image> image_;
    QSizeF page_;
    QString text_;
    QImage scaled_;                 ///< the picture at the size it was painted last
    std::uint64_t scaledFrom_ = 0;  ///< the picture's id
    SoftShadow shadow_;
    bool showsFocus_ = false;
};

}  // namespace quorvel
