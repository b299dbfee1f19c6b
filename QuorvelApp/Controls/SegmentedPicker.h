#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QButtonGroup;

namespace quorvel {

/// A choice of few, all in sight, side by side: one of them is chosen. To the keyboard and to screen readers it is a
/// group of radio buttons; the arrow keys go from one to the next and choose it. A click doesn't take the keyboard
/// away from what is being worked on.
class SegmentedPicker : public QWidget {
    Q_OBJECT
public:
    /// What stands in a segment. A symbol alone needs a name, which is its tooltip, too.
    struct Segment {
        QString text;
        QString symbol;  ///< one of Symbols, before the text
        QString name;    ///< what a screen reader says; the text when empty
    };

    /// `title` is the accessible name; it isn't shown. The first segment is chosen.
    SegmentedPicker(const QString& title, const QList<Segment>& segments, QWidget* parent = nullptr);
    /// Of texts only.
    SegmentedPicker(const QString& title, const QStringList& texts, QWidget* parent = nullptr);

    /// Chooses without `activated`; ignores what isn't there.
    void setCurrentIndex(int index);
    int currentIndex() const;

Q_SIGNALS:
    /// The user has chosen, perhaps what was chosen already.
    void activated(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* group_ = nullptr;
};

}  // namespace quorvel
