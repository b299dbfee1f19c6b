#pragma once

#include <QLineEdit>

namespace quorvel {

/// A line of text of any length that is stored with every key: `textChanged` speaks of the user's changes only, whether
/// typed, dropped or dictated. What is shown follows the model, an undo included, and the cursor stays where the user
/// is. Of several lines it makes one.
class TextField : public QLineEdit {
    Q_OBJECT
public:
    /// `title` is the accessible name.
    explicit TextField(const QString& title, QWidget* parent = nullptr);

    /// Shows the model's text.
    void setShown(const QString& text);

protected:
    bool event(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
};

}  // namespace quorvel
