#include "Shell/RenameDialog.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel {

RenameDialog::RenameDialog(AppModel& model, const DeckProject& deck, QWidget* window)
    : QDialog(window), model_(model), deck_(deck.id) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle("Rename Deck");

    auto* title = new QLabel("Rename Deck");
    title->setFont(Style::font(Style::TextSize::title3, QFont::DemiBold));
    auto* label = new QLabel("Name");
    name_ = new QLineEdit(text(deck.name));
    name_->setAccessibleName("Name");
    name_->setMinimumWidth(320);
    name_->selectAll();
    label->setBuddy(name_);

    auto* buttons = new QDialogButtonBox;
    buttons->addButton("Cancel", QDialogButtonBox::RejectRole)->setAutoDefault(false);
    buttons->addButton("Rename", QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &RenameDialog::rename);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    column->setSpacing(Style::small);
    column->addWidget(title);
    column->addSpacing(Style::tight);
    column->addWidget(label);
    column->addWidget(name_);
    column->addSpacing(Style::small);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

void RenameDialog::rename() {
    model_.renameDeck(deck_, name_->text().toStdString());
    accept();
}

}  // namespace quorvel
