#pragma once

#include "Model/AppModel.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace quorvel {

class SegmentedPicker;
class SheetPicture;

/// One sheet as it will be printed, and which one: buttons, Page Up and Page Down, the arrow keys, Home, End, the
/// wheel.
class SheetPreview : public QWidget {
    Q_OBJECT
public:
    explicit SheetPreview(AppModel& model, QWidget* parent = nullptr);

    /// Shows what the model has now.
    void refresh();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QWidget* makePageBar();
    void refreshPageBar(std::int64_t page, std::int64_t count);

    bool canGoBack() const;
    bool canGoOn() const;
    void previousPage();
    void nextPage();

    AppModel& model_;
    QToolButton* previous_ = nullptr;
    QLabel* caption_ = nullptr;
    QToolButton* next_ = nullptr;
    SegmentedPicker* side_ = nullptr;
    SheetPicture* picture_ = nullptr;
    int wheel_ = 0;  ///< turned but not yet a page, in eighths of a degree
};

}  // namespace quorvel
