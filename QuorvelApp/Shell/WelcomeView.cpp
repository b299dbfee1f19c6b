#include "Shell/WelcomeView.h"

#include "Controls/BusyButton.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/Wording.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel {
namespace {

constexpr int widestSteps = 560;

/// The number of a step, in a circle.
class StepNumber : public QWidget {
public:
    explicit StepNumber(int number) : number_(number) {
        setFont(Style::font(Style::TextSize::callout, QFont::DemiBold));
        const int size = fontMetrics().height() + Style::small;
        setFixedSize(size, size);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Style::panel(palette(), 0.16));
        painter.drawEllipse(rect());
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter, QString::number(number_));
    }

private:
    int number_;
};

QWidget* makeSteps() {
    auto* steps = new QWidget;
    steps->setMaximumWidth(widestSteps);
    auto* grid = new QGridLayout(steps);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Style::medium);
    grid->setVerticalSpacing(Style::medium);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const char* words :
         {"Make a spreadsheet: one row per card, with columns like Name, Text, Cost, Type, Art, Icons and Qty.",
          "Design the card once: text boxes, pictures, shapes and icon rows bound to your columns.",
          "Print sheets with cut marks and backs, or export 300 dpi images and Tabletop Simulator decks."}) {
        auto* step = new QLabel(words);
        step->setWordWrap(true);
        // The first line stands level with the number, also where the text takes two.
        auto* number = new StepNumber(row + 1);
        step->setContentsMargins(0, (number->height() - step->fontMetrics().height()) / 2, 0, 0);
        grid->addWidget(number, row, 0, Qt::AlignTop);
        grid->addWidget(step, row, 1, Qt::AlignTop);
        ++row;
    }
    return steps;
}

QLabel* makeLine(const QString& words, const QFont& font) {
    auto* line = new QLabel(words);
    line->setFont(font);
    line->setAlignment(Qt::AlignCenter);
    line->setWordWrap(true);
    return line;
}

}  // namespace

WelcomeView::WelcomeView(AppModel& model, QWidget* parent) : QWidget(parent) {
    auto* symbol = new SymbolLabel("rectangle.portrait.on.rectangle.portrait.angled", 56, Style::accent);
    auto* title = makeLine(text(appName), Style::font(Style::TextSize::title1, QFont::DemiBold));
    auto* purpose = makeLine("Turn a spreadsheet into print-and-play cards", Style::font(Style::TextSize::title3));
    Style::makeSecondary(purpose);
    auto* drop = makeLine("Or drop a CSV, TSV or Excel file here. Numbers: File › Export To › CSV.",
                          Style::font(Style::TextSize::callout));
    Style::makeSecondary(drop);

    auto* create = new QPushButton("New Deck…");
    create->setDefault(true);
    auto* sample = new BusyButton("Open the Sample Deck");
    auto* choose = new QPushButton("Choose Spreadsheet…");
    connect(create, &QPushButton::clicked, this, [&model] { model.setShowNewDeck(true); });
    connect(sample, &QPushButton::clicked, this, [&model] { model.openSampleDeck(SampleTemplates::Kind::classic); });
    connect(choose, &QPushButton::clicked, this, [&model] { model.chooseSpreadsheet(); });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Style::medium);
    buttons->addStretch();
    for (QPushButton* button : {create, static_cast<QPushButton*>(sample), choose}) buttons->addWidget(button);
    buttons->addStretch();

    auto* middle = new QHBoxLayout;
    middle->addStretch(1);
    middle->addWidget(makeSteps(), 1000);
    middle->addStretch(1);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Style::huge, Style::large, Style::huge, Style::large);
    column->setSpacing(0);
    column->addStretch(2);
    column->addWidget(symbol, 0, Qt::AlignHCenter);
    column->addSpacing(Style::medium);
    column->addWidget(title);
    column->addSpacing(Style::tight);
    column->addWidget(purpose);
    column->addSpacing(Style::huge);
    column->addLayout(middle);
    column->addSpacing(Style::huge);
    column->addLayout(buttons);
    column->addSpacing(Style::large);
    column->addWidget(drop);
    column->addStretch(3);

    subscription_ = model.subscribe([&model, sample](Changes changes) {
        if (changes.has(Change::status)) sample->setBusy(model.state()._isPaintingSample);
    });
    sample->setBusy(model.state()._isPaintingSample);
}

}  // namespace quorvel
