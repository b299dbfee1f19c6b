#include "CardsTab/CardsColumn.h"

#include "CardsTab/Banners.h"
#include "CardsTab/CardGrid.h"
#include "CardsTab/CardsHeader.h"
#include "Controls/Style.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace quorvel {
namespace {

constexpr int margin = Style::large;
constexpr int lineStep = 48;  // of the wheel and the arrows of the scroll bar

int heightFor(const QWidget& widget, int width) {
    return widget.hasHeightForWidth() ? widget.heightForWidth(width) : widget.sizeHint().height();
}

}  // namespace

CardsColumn::CardsColumn(AppModel& model, QWidget* parent) : QAbstractScrollArea(parent), model_(model) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setBackgroundRole(QPalette::Window);
    content_ = new QWidget(viewport());
    header_ = new CardsHeader(model, content_);
    banners_ = new Banners(content_);
    grid_ = new CardGrid(model, content_);
    content_->installEventFilter(this);
    for (QWidget* each :
         {static_cast<QWidget*>(header_), static_cast<QWidget*>(banners_), static_cast<QWidget*>(grid_)})
        each->installEventFilter(this);
    connect(grid_, &CardGrid::revealRequested, this, &CardsColumn::reveal);
    connect(banners_, &Banners::activated, this, [this](Banner::Action action) {
        if (action == Banner::Action::chooseSpreadsheet) model_.chooseSpreadsheet();
        if (action == Banner::Action::chooseArtFolder) model_.chooseFolder(AppModel::FolderKind::art);
    });
    banners_->setBanners(bannersFor(model.state().open));
    arrange();
}

void CardsColumn::refresh(Changes changes) {
    if (changes.has(Change::selection)) anchor_ = {};
    if (changes.has(Change::openDeck) || changes.has(Change::decks)) {
        header_->refresh();
        banners_->setBanners(bannersFor(model_.state().open));
    }
    grid_->refresh(changes);
    if (changes.has(Change::selection) || changes.has(Change::openDeck) || changes.has(Change::decks)) arrange();
}

bool CardsColumn::eventFilter(QObject* object, QEvent* event) {
    // A part has got another height: by another font, by the words that it shows.
    if (event->type() == QEvent::LayoutRequest && !arranging_) arrange();
    return QAbstractScrollArea::eventFilter(object, event);
}

void CardsColumn::resizeEvent(QResizeEvent*) {
    if (!arranging_) arrange();
}

void CardsColumn::arrange() {
    arranging_ = true;
    // Decided for the full width, so that the bar's coming can't take away the reason for it.
    const int bar = verticalScrollBar()->sizeHint().width();
    const QSize full = maximumViewportSize();
    Places places = placesFor(full.width());
    const bool scrolls = places.height() > full.height();
    if (scrolls) places = placesFor(full.width() - bar);
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    content_->resize(places.grid.width(), std::max(places.height(), full.height()));
    header_->setGeometry(places.header);
    banners_->setGeometry(places.banners);
    grid_->setGeometry(places.grid);
    verticalScrollBar()->setRange(0, std::max(places.height() - full.height(), 0));
    verticalScrollBar()->setPageStep(full.height());
    verticalScrollBar()->setSingleStep(lineStep);
    const int value =
        anchor_.tile < 0 || grid_->count() == 0
            ? anchor_.value
            : grid_->y() + grid_->tileRect(std::min(anchor_.tile, grid_->count() - 1)).top() - anchor_.below;
    verticalScrollBar()->setValue(value);
    place();
    arranging_ = false;
}

/// Where the parts stand in a column of this width, below each other.
CardsColumn::Places CardsColumn::placesFor(int width) const {
    const int inner = std::max(width - 2 * margin, 0);
    Places places;
    places.header = QRect(margin, margin, inner, heightFor(*header_, inner));
    int y = places.header.bottom() + 1;
    const int banners = heightFor(*banners_, inner);
    if (banners > 0) y += Style::medium;
    places.banners = QRect(margin, y, inner, banners);
    y += banners;
    // The grid has a margin of its own, for shadows and the ring.
    places.grid = QRect(0, y, width, std::min(grid_->heightForWidth(width), QWIDGETSIZE_MAX - y));
    return places;
}

void CardsColumn::scrollContentsBy(int, int) {
    if (arranging_) return;
    place();
    rememberPlace();
}

void CardsColumn::place() {
    const int value = verticalScrollBar()->value();
    content_->move(0, -value);
    grid_->setSeen(QRect(0, value - grid_->y(), content_->width(), viewport()->height()));
}

void CardsColumn::rememberPlace() {
    const int value = verticalScrollBar()->value();
    anchor_ = {-1, 0, value};
    const int top = value - grid_->y() - CardGrid::tilesAt().y();
    if (top <= 0) return;
    const TileRange seen = grid_->tiles().visible(top, top + viewport()->height());
    if (seen.isEmpty()) return;
    anchor_.tile = seen.first;
    anchor_.below = grid_->tiles().tile(seen.first).top() - top;
}

void CardsColumn::reveal(const QRect& part) {
    QScrollBar& bar = *verticalScrollBar();
    const int height = viewport()->height();
    const int bottom = grid_->y() + part.y() + part.height();
    int top = grid_->y() + part.y();
    // With the first row comes what stands above it.
    if (part.y() <= 0 && bottom <= height) top = 0;
    if (top < bar.value() || part.height() > height)
        bar.setValue(top);
    else if (bottom > bar.value() + height)
        bar.setValue(bottom - height);
}

}  // namespace quorvel
