#pragma once

#include "Model/AppModel.h"
#include "TemplateTab/CanvasPainter.h"
#include "TemplateTab/LayerDrag.h"

#include <QWidget>
#include <optional>

namespace quorvel {

/// The card, as large as it fits, with guides and the overlays of its layers: what is clicked, dragged and nudged.
class CardSurface : public QWidget {
    Q_OBJECT
public:
    /// The model outlives it.
    explicit CardSurface(AppModel& model, QWidget* parent = nullptr);

    void setGuides(bool shown);
    void setOutlines(Outlines outlines);

    /// Reads anew what `changes` are about.
    void refresh(Changes changes);

    const CanvasGeometry& geometry() const { return scene_.geometry; }
    const std::vector<LayerOverlay>& overlays() const { return scene_.overlays; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showDesign();
    void showPicture();
    void describe();

    void interrupt();
    void click(Point point);
    void showCursor(Point point);
    bool isOnHandle(Point point) const;
    /// Does what the key is for; false when it is for nothing here.
    bool takeKey(const QKeyEvent& event);
    bool wantsKey(const QKeyEvent& event) const;

    AppModel& model_;
    CanvasPainter::Scene scene_;
    CanvasPainter painter_;
    Outlines outlines_ = Outlines::all;
    LayerDrag drag_;
    std::optional<Point> pressed_;  ///< of a press that may become a click
};

}  // namespace quorvel
