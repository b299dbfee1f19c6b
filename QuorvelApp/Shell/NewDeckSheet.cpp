#include "Shell/NewDeckSheet.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvel {
namespace {

using Kind = SampleTemplates::Kind;

std::string_view descriptionOf(Kind kind) {
    switch (kind) {
        case Kind::classic:
            return "Title, cost, art, type bar, rules text and icons; frame colour by type.";
        case Kind::tarot:
            return "Full-bleed art with a banner, for characters and events.";
        case Kind::mini:
            return "Small cards and tokens with a big icon row.";
    }
    return {};
}

QLabel* makeHeading(const QString& words) {
    auto* heading = new QLabel(words);
    heading->setFont(Style::font(Style::TextSize::body, QFont::DemiBold));
    return heading;
}

}  // namespace

NewDeckSheet::NewDeckSheet(AppModel& model, QWidget* window) : QDialog(window), model_(model) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle("New Deck");

    auto* title = new QLabel("New Deck");
    title->setFont(Style::font(Style::TextSize::title3, QFont::DemiBold));
    auto* nameLabel = makeHeading("Deck name");
    name_ = new QLineEdit;
    name_->setPlaceholderText("My Game");
    name_->setAccessibleName("Deck name");
    nameLabel->setBuddy(name_);
    auto* next =
        new QLabel("Next, choose the spreadsheet of cards. You can change the card size and every layer later.");
    next->setWordWrap(true);
    next->setFont(Style::font(Style::TextSize::callout));

    auto* buttons = new QDialogButtonBox;
    buttons->addButton("Cancel", QDialogButtonBox::RejectRole)->setAutoDefault(false);
    buttons->addButton("Create", QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &NewDeckSheet::create);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    column->setSpacing(Style::small);
    column->addWidget(title);
    column->addSpacing(Style::small);
    column->addWidget(nameLabel);
    column->addWidget(name_);
    column->addSpacing(Style::small);
    column->addWidget(makeHeading("Template"));
    column->addWidget(makeKinds());
    column->addSpacing(Style::small);
    column->addWidget(next);
    column->addSpacing(Style::small);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    name_->setMinimumWidth(420);
    name_->setFocus();
}

QWidget* NewDeckSheet::makeKinds() {
    auto* kinds = new QWidget;
    kinds->setAccessibleName("Template");
    auto* column = new QVBoxLayout(kinds);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Style::hair);
    for (const auto& [kind, name] : EnumText<Kind>::cases) {
        auto* button = new QRadioButton(text(SampleTemplates::label(kind)));
        button->setAccessibleDescription(text(descriptionOf(kind)));
        button->setChecked(kind == Kind::classic);
        kinds_[kind] = button;

        auto* description = new QLabel(text(descriptionOf(kind)));
        Style::makeSecondary(description);
        // Below the name, not below the circle.
        const int circle = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, button) +
                           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, button);
        description->setContentsMargins(circle, 0, 0, Style::small);
        description->setProperty("kind", int(kind));
        description->installEventFilter(this);

        column->addWidget(button);
        column->addWidget(description);
    }
    return kinds;
}

bool NewDeckSheet::eventFilter(QObject* object, QEvent* event) {
    // A description belongs to its button: a click on either chooses.
    if (event->type() == QEvent::MouseButtonRelease) kinds_.at(Kind(object->property("kind").toInt()))->click();
    return QDialog::eventFilter(object, event);
}

void NewDeckSheet::create() {
    const auto chosen = std::ranges::find_if(kinds_, [](const auto& each) { return each.second->isChecked(); });
    model_.newDeck(chosen->first, name_->text().toStdString());
    accept();
}

}  // namespace quorvel
