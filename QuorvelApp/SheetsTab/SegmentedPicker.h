#pragma once

#include <QWidget>

class QButtonGroup;

namespace quorvel {

/// A choice of few, all in sight, side by side: one of them is chosen. The arrow keys go from one to the next.
class SegmentedPicker : public QWidget {
    Q_OBJECT
public:
    /// `title` is the accessible name; it isn't shown.
    SegmentedPicker(const QString& title, const QStringList& options, QWidget* parent = nullptr);

    void setCurrentIndex(int index);
    int currentIndex() const;

signals:
    /// The user has chosen, perhaps what was chosen already.
    void activated(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* options_ = nullptr;
};

}  // namespace quorvel
