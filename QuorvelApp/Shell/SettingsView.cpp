#include "Shell/SettingsView.h"

#include "Controls/Style.h"
#include "Controls/Symbols.h"
#include "Controls/Wording.h"

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace quorvel {
namespace {

const std::string settingsTab = "settingsTab";
constexpr int width = 460;

QWidget* makePrivacyPane() {
    auto* pane = new QWidget;
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    column->setSpacing(Style::medium);
    for (const std::string& words :
         {"Your decks never leave this Mac. " + std::string(appName) +
              " reads the spreadsheets and folders you choose, and writes only the files you export.",
          std::string("It keeps a bookmark to each spreadsheet so it can watch it for changes, and goes online only to "
                      "look for updates.")}) {
        auto* paragraph = new QLabel(shown(words));
        paragraph->setWordWrap(true);
        paragraph->setFixedWidth(width - 2 * Style::large);
        column->addWidget(paragraph);
    }
    return pane;
}

}  // namespace

SettingsView::SettingsView(Desktop& desktop, QWidget* parent) : QDialog(parent), desktop_(desktop) {
    setWindowTitle("Settings");
    bar_ = new QWidget;
    auto* row = new QHBoxLayout(bar_);
    row->setContentsMargins(Style::small, Style::small, Style::small, Style::small);
    row->addStretch();
    row->addStretch();
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    panes_ = new QStackedWidget;
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar_);
    column->addWidget(line);
    column->addWidget(panes_);
    column->setSizeConstraint(QLayout::SetFixedSize);

    buttons_ = new QButtonGroup(this);
    addPane("privacy", "hand.raised", "Privacy", makePrivacyPane());

    const QString last = text(desktop_.userDefault(settingsTab).value_or(""));
    showPane(qMax(0, int(tags_.indexOf(last))));
    connect(buttons_, &QButtonGroup::idClicked, this, [this](int index) {
        showPane(index);
        desktop_.setUserDefault(settingsTab, tags_.at(index).toStdString());
    });
    connect(new QShortcut(Qt::CTRL | Qt::Key_W, this), &QShortcut::activated, this, &QDialog::reject);
}

void SettingsView::addPane(const QString& tag, const QString& symbol, const QString& name, QWidget* pane) {
    auto* button = new QToolButton;
    button->setText(name);
    button->setIcon(Symbols::icon(symbol));
    button->setIconSize({24, 24});
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    buttons_->addButton(button, int(tags_.size()));
    auto* row = static_cast<QHBoxLayout*>(bar_->layout());
    row->insertWidget(row->count() - 1, button);
    panes_->addWidget(pane);
    tags_.append(tag);
}

void SettingsView::showPane(int index) {
    buttons_->button(index)->setChecked(true);
    panes_->setCurrentIndex(index);
}

}  // namespace quorvel
