#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace quorvel {

/// A screen without content, centred: a large symbol, a title, a description, and what to do about it.
class EmptyState : public QWidget {
    Q_OBJECT
public:
    explicit EmptyState(const QString& symbol, const QString& title, QWidget* parent = nullptr);

    void setDescription(const QString& description);

    /// Without a text there is no button.
    void setAction(const QString& text);

Q_SIGNALS:
    void activated();

private:
    QLabel* description_ = nullptr;
    QPushButton* action_ = nullptr;
};

}  // namespace quorvel
