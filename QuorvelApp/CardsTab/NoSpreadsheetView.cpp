#include "CardsTab/NoSpreadsheetView.h"

#include "Controls/BusyButton.h"
#include "Controls/CodeSpans.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/TintedPanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel {
namespace {

constexpr int symbolSize = 44;
constexpr int panelInset = 10;
constexpr int columnGap = 14;
constexpr int rowGap = 6;
constexpr double panelOpacity = 0.07;

struct Role {
    const char* name;
    const char* explanation;
};
constexpr Role roles[] = {
    {"Title", "Name, Title, Card Name"},
    {"Text", "Text, Rules, Effect: “Gain 2 {icon:coin}. **Draw** a card.”"},
    {"Cost", "Cost, Price, Points"},
    {"Type", "Type, Kind, Category (rules can colour frames by it)"},
    {"Art", "Art, Image: art/pear.png, a path next to the spreadsheet"},
    {"Icons", "Icons: “coin, coin, star” or “2 leaf”"},
    {"Quantity", "Qty, Count, Copies: blank means 1, 0 leaves it out"},
};

const QString markup = QStringLiteral(
    "In text cells: `**bold**`, `*italic*` and `{icon:coin}` for an icon. Other columns work too, as "
    "`{{Column Name}}`.");

QLabel* plainLabel(const QString& words, QWidget* parent) {
    auto* const label = new QLabel(words, parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QWidget* rolePanel(QWidget* parent) {
    auto* const panel = new TintedPanel(panelOpacity, parent);
    auto* const grid = new QGridLayout(panel);
    grid->setContentsMargins(panelInset, panelInset, panelInset, panelInset);
    grid->setHorizontalSpacing(columnGap);
    grid->setVerticalSpacing(rowGap);
    int row = 0;
    for (const Role& role : roles) {
        auto* const name = plainLabel(QString::fromUtf8(role.name), panel);
        name->setFont(Style::font(Style::TextSize::body, QFont::DemiBold));
        auto* const explanation = plainLabel(QString::fromUtf8(role.explanation), panel);
        Style::makeSecondary(explanation);
        grid->addWidget(name, row, 0);
        grid->addWidget(explanation, row, 1);
        ++row;
    }
    return panel;
}

}  // namespace

NoSpreadsheetView::NoSpreadsheetView(AppModel& model, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    column->setSpacing(Style::medium);
    column->addStretch(2);
    column->addWidget(new SymbolLabel(QStringLiteral("tablecells"), symbolSize, Style::accent, page), 0,
                      Qt::AlignHCenter);

    auto* const title = plainLabel(QStringLiteral("Choose the spreadsheet of cards"), page);
    title->setFont(Style::font(Style::TextSize::title3, QFont::DemiBold));
    column->addWidget(title, 0, Qt::AlignHCenter);

    auto* const introduction = plainLabel(
        QStringLiteral("One row per card. Columns the template knows (any order, any of these names):"), page);
    introduction->setWordWrap(true);
    introduction->setAlignment(Qt::AlignCenter);
    column->addWidget(introduction);
    column->addWidget(rolePanel(page), 0, Qt::AlignHCenter);

    auto* const code = new QLabel(page);
    CodeSpans::show(markup, *code);
    code->setFont(Style::font(Style::TextSize::callout));
    code->setWordWrap(true);
    code->setAlignment(Qt::AlignCenter);
    Style::makeSecondary(code);
    column->addWidget(code);

    auto* const choose = new QPushButton(QStringLiteral("Choose Spreadsheet…"), page);
    choose->setDefault(true);
    connect(choose, &QPushButton::clicked, this, [&model] { model.chooseSpreadsheet(); });
    auto* const sample = new BusyButton(QStringLiteral("Open the Sample Deck"), page);
    connect(sample, &QPushButton::clicked, this, [&model] { model.openSampleDeck(SampleTemplates::Kind::classic); });
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(Style::medium);
    buttons->addStretch();
    buttons->addWidget(choose);
    buttons->addWidget(sample);
    buttons->addStretch();
    column->addSpacing(Style::small);
    column->addLayout(buttons);
    column->addStretch(3);
    setWidget(page);

    subscription_ = model.subscribe([&model, sample](Changes changes) {
        if (changes.has(Change::status)) sample->setBusy(model.state()._isPaintingSample);
    });
    sample->setBusy(model.state()._isPaintingSample);
}

}  // namespace quorvel
