#include "Shell/WindowToolbar.h"

#include "Controls/SegmentedPicker.h"
#include "Controls/Style.h"
#include "Controls/SymbolButton.h"
#include "Controls/Wording.h"
#include "Shell/ExportCommands.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

namespace quorvel {
namespace {

constexpr int symbolSize = 20;

QStringList tabTitles() {
    QStringList titles;
    for (const auto& [tab, name] : EnumText<Tab>::cases) titles << text(title(tab));
    return titles;
}

}  // namespace

WindowToolbar::WindowToolbar(AppModel& model, const ExportCommands& exports, QWidget* parent)
    : QToolBar("Toolbar", parent), model_(model) {
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);  // it comes and goes with the deck
    toggleViewAction()->setEnabled(false);

    tabs_ = new SegmentedPicker("View", tabTitles());
    tabs_->setToolTip(shown("Switch between the cards, the template, printing and the spreadsheet (⌘1–⌘4)"));
    connect(tabs_, &SegmentedPicker::activated, this, [this](int index) { model_.setTab(Tab(index)); });
    auto* commands = makeCommands(exports);
    auto* counterweight = new QWidget;  // keeps the tabs in the middle
    counterweight->setFixedWidth(commands->sizeHint().width());
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(Style::small, Style::tight, Style::small, Style::tight);
    row->addWidget(counterweight);
    row->addStretch();
    row->addWidget(tabs_);
    row->addStretch();
    row->addWidget(commands);
    content->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(content);

    subscription_ = model_.subscribe([this](Changes changes) {
        if (changes.has(Change::tab) || changes.has(Change::selection) || changes.has(Change::decks)) refresh();
    });
    refresh();
}

QWidget* WindowToolbar::makeCommands(const ExportCommands& exports) {
    auto* choose = new SymbolButton(u"tablecells.badge.ellipsis", "Choose Spreadsheet", symbolSize);
    choose->setToolTip("Choose the spreadsheet of cards (CSV, TSV or Excel)");
    connect(choose, &QToolButton::clicked, this, [this] { model_.chooseSpreadsheet(); });
    auto* share = new SymbolButton(u"square.and.arrow.up", "Export", symbolSize);
    share->setToolTip("Export print sheets, card images or a Tabletop Simulator deck");
    auto* menu = new QMenu("Export", share);
    exports.addTo(*menu);
    share->setMenu(menu);
    share->setPopupMode(QToolButton::InstantPopup);

    auto* commands = new QWidget;
    auto* row = new QHBoxLayout(commands);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::tight);
    row->addWidget(choose);
    row->addWidget(share);
    return commands;
}

void WindowToolbar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(QRect(0, height() - 1, width(), 1), Style::line(palette()));
}

void WindowToolbar::refresh() {
    setVisible(model_.currentProject() != nullptr);
    tabs_->setCurrentIndex(int(model_.state()._tab));
}

}  // namespace quorvel
