#pragma once

#include "CardsTab/CardTilePainter.h"
#include "CardsTab/GridLayout.h"
#include "CardsTab/ShownTiles.h"
#include "Model/AppModel.h"

#include <QWidget>
#include <optional>

namespace quorvel {

/// The cards of the open deck as tiles. There is no widget for a tile: what is seen is drawn from the model's values.
/// Usable by keyboard, with one current tile; what one does with a card is to edit the template with it.
class CardGrid : public QWidget {
    Q_OBJECT
public:
    explicit CardGrid(AppModel& model, QWidget* parent = nullptr);
    ~CardGrid() override;

    /// Reads anew what `changes` are about. Whoever places the grid asks for its height afterwards.
    void refresh(Changes changes);

    /// The part of the grid that is on screen while the grid is, in its own coordinates.
    void setSeen(const QRect& seen);

    /// The layout of the tiles, which begins at `tilesAt`.
    const GridLayout& tiles() const { return layout_; }
    static QPoint tilesAt();
    int count() const { return layout_.count(); }
    QRect tileRect(int index) const { return layout_.tile(index).translated(tilesAt()); }
    CardTile tile(int index) const;

    /// The tile that keys act on; none before the grid was first used.
    std::optional<int> current() const { return current_; }
    void setCurrent(int index);
    void editTemplateWith(int index);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// This part of the grid wants to be on screen.
    void revealRequested(const QRect& part);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    GridLayout layoutFor(int width) const;
    void arrange();
    void tellShown();
    TileRange onScreen() const;
    CardTilePainter::Place place(int index) const;
    void updateTile(int index);
    void updateChangedPictures();
    void readLook();
    void runSpinners();
    std::optional<int> at(QPoint place) const { return layout_.at(place - tilesAt()); }
    std::optional<int> firstSeen() const;
    void announceCurrent();

    AppModel& model_;
    GridLayout layout_;
    ShownTiles shownTiles_;
    CardTilePainter painter_;
    QRect seen_;
    std::optional<int> current_;
    bool isCalm_ = false;  // for users who asked for less motion
    int spinnerTimer_ = 0;
    double turn_ = 0;
};

}  // namespace quorvel
