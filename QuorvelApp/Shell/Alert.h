#pragma once

#include <QDialog>
#include <QDialogButtonBox>

class QLabel;

namespace quorvel {

/// A sentence that the user has to answer before going on in `window`, and what it means in smaller words. Texts are
/// plain, whatever characters a deck's name brings. Add the buttons, then `open` it; it goes when answered, and Escape
/// closes it.
class Alert : public QDialog {
    Q_OBJECT
public:
    Alert(const QString& message, const QString& information, QWidget* window);

    void setInformation(const QString& information);

    enum class Answer { default_, other };
    /// Return stands for the default answer. Any button closes the alert.
    QPushButton* addButton(const QString& words, QDialogButtonBox::ButtonRole role, Answer answer = Answer::other);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLabel* information_ = nullptr;
    QDialogButtonBox* buttons_ = nullptr;
};

}  // namespace quorvel
