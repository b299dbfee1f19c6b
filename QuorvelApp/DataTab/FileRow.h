#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace quorvel {

class ElidedLabel;

/// A file or folder of the deck: its name, cut in the middle, and under it what can be done about it.
class FileRow : public QWidget {
    Q_OBJECT
public:
    explicit FileRow(QWidget* parent = nullptr);

    enum class Look { normal, warning };
    /// `trouble` is a sentence about it for the tooltip and for those who can't see its colour.
    void setName(const QString& name, Look look, const QString& trouble = {});

    /// What is there in place of a file: wrapped rather than cut.
    void setSentence(const QString& sentence);

    /// Behind the name.
    void addSign(QWidget* sign);
    /// Many rows have a button of the same title, so each needs a name of its own.
    QPushButton* addButton(const QString& title, const QString& accessibleName);

protected:
    void changeEvent(QEvent* event) override;

private:
    void color();

    ElidedLabel* name_;
    QLabel* sentence_;
    Look look_ = Look::normal;
    QHBoxLayout* nameLine_;
    QHBoxLayout* buttons_;
};

}  // namespace quorvel
