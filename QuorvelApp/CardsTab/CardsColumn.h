#pragma once

#include "Model/AppModel.h"

#include <QAbstractScrollArea>

namespace quorvel {

class Banners;
class CardGrid;
class CardsHeader;

/// Header, banners and grid in one scrolling column. The first tile that is seen keeps its place when cards are read
/// anew, banners come and go, or the window gets another width.
class CardsColumn : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit CardsColumn(AppModel& model, QWidget* parent = nullptr);

    /// Reads anew what `changes` are about.
    void refresh(Changes changes);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    /// What stays where it is: a tile's top edge, `below` the top of what is seen; without a tile the column's start.
    struct Anchor {
        int tile = -1;
        int below = 0;
        int value = 0;
    };

    struct Places {
        QRect header, banners, grid;
        int height() const { return grid.bottom() + 1; }
    };

    void arrange();
    Places placesFor(int width) const;
    void place();
    void rememberPlace();
    void reveal(const QRect& part);

    AppModel& model_;
    QWidget* content_ = nullptr;
    CardsHeader* header_ = nullptr;
    Banners* banners_ = nullptr;
    CardGrid* grid_ = nullptr;
    Anchor anchor_;
    bool arranging_ = false;
};

}  // namespace quorvel
