#pragma once

#include <QPlainTextEdit>

namespace quorvel {

/// The words of a layer in the letters of a typewriter, stored with every key. It grows with its lines up to a limit,
/// then scrolls. What is shown follows the model, an undo included, and the cursor stays where the user is. The Tab key
/// leaves it.
class ContentEditor : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit ContentEditor(QWidget* parent = nullptr);

    /// Shows the model's text; a line break of any kind is one.
    void setShown(const QString& text);
    /// What is shown, with a line feed for each line break.
    QString content() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has changed it.
    void contentEdited(const QString& content);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;

private:
    void wearFont();

    QString shown_;
};

}  // namespace quorvel
