#pragma once

#include <QScrollArea>
#include <QString>

class QLabel;
class QVBoxLayout;

namespace quorvel {

/// A scrolling column of titled sections of labelled rows, as in a settings window. It is never narrower than its rows
/// need. The Tab key goes from top to bottom, whatever the order in which the controls were made; a row that is hidden
/// leaves no gap. Turning the wheel over a picker scrolls the form, unless the picker has the keyboard and
/// the pointer is over it.
class GroupedForm : public QScrollArea {
    Q_OBJECT
public:
    explicit GroupedForm(QWidget* parent = nullptr);

    /// One section: a title, a rounded panel of rows, a footer in small secondary text. A handle: copies are the same
    /// section, which the form owns.
    class Section {
    public:
        /// A control behind a label, which becomes its accessible name if it has none. A control that likes to grow
        /// (`QSizePolicy::ExpandFlag`) gets the width that the label leaves; others stand at the right edge.
        void addRow(const QString& label, QWidget* control);
        /// A control over the whole width: a check box, a button, a line of text.
        void addRow(QWidget* control);
        /// Shows or hides the row of a control that was added.
        void setRowVisible(QWidget* control, bool visible);
        /// A section that was made without a title has none.
        void setTitle(const QString& title);
        /// What stands between backticks is shown in the letters of a typewriter. An empty text takes it away.
        void setFooter(const QString& text);

    private:
        friend class GroupedForm;
        void add(QWidget* row, QWidget* control);

        GroupedForm* form_ = nullptr;
        QLabel* heading_ = nullptr;
        QWidget* panel_ = nullptr;
        QLabel* footer_ = nullptr;
    };

    /// Without a title the section is a panel only.
    Section addSection(const QString& title);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

    /// For rows that make new controls of their own: lets the Tab key go through them in order.
    void orderTabs();

private:
    QVBoxLayout* sections_ = nullptr;
};

}  // namespace quorvel
