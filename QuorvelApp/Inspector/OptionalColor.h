#pragma once

#include "Foundation/RGBA.h"

#include <QWidget>
#include <optional>

class QCheckBox;

namespace quorvel {

class ColorWell;

/// A colour that may be absent: a check box, and the colour while it is there.
class OptionalColor : public QWidget {
    Q_OBJECT
public:
    /// `fallback` is the colour that checking the box gives.
    OptionalColor(const QString& title, const RGBA& fallback, QWidget* parent = nullptr);

    /// Shows the model's value.
    void setValue(const std::optional<RGBA>& value);
    const std::optional<RGBA>& value() const { return value_; }

    void closeDialog();

Q_SIGNALS:
    /// The user has chosen another colour, or none. Unless `setValue` answers it, it goes back to the old one.
    void valuePicked(const std::optional<RGBA>& value);

private:
    void pick(const std::optional<RGBA>& value);

    std::optional<RGBA> value_;
    QCheckBox* isPresent_ = nullptr;
    ColorWell* well_ = nullptr;
};

}  // namespace quorvel
