#pragma once

#include "Templates/Layer.h"

#include <QWidget>

namespace quorvel {

class ElidedLabel;
class EyeButton;
class SymbolLabel;

/// A layer in the list: what kind it is, its name, whether it has rules, and the eye that hides and shows it.
class LayerRow : public QWidget {
    Q_OBJECT
public:
    /// What is seen of a layer.
    struct Content {
        UUID layer;
        LayerKind kind = LayerKind::text;
        QString name;
        bool hasRules = false;
        bool hidden = false;

        bool operator==(const Content&) const = default;

        static Content of(const Layer& layer);
    };

    /// How the row stands out: that of a list with the keyboard is filled with the accent colour.
    enum class Look { plain, selected, active };

    explicit LayerRow(QWidget* parent = nullptr);

    void setContent(const Content& content);
    const Content& content() const { return content_; }

    /// A row that stands out has its eye in the order of the Tab key: one for the whole list is enough.
    void setLook(Look look);
    Look look() const { return look_; }

Q_SIGNALS:
    void pressed();
    /// The user wants the layer hidden, or shown again.
    void eyePressed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void showColors();
    QColor nameColor() const;
    QColor symbolColor() const;

    Content content_;
    Look look_ = Look::plain;
    ElidedLabel* name_ = nullptr;
    SymbolLabel* rules_ = nullptr;
    EyeButton* eye_ = nullptr;
};

}  // namespace quorvel
