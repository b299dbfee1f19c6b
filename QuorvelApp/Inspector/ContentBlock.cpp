#include "Inspector/ContentBlock.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"
#include "Inspector/ContentEditor.h"
#include "Inspector/FieldLabel.h"
#include "Inspector/IconPictures.h"
#include "Pictures/IconSet.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

namespace quorvel {

namespace {

constexpr int gap = 6;

}  // namespace

ContentBlock::ContentBlock(BoundControls& controls, Binding<std::string> content, FieldNames fieldNames, Icons icons)
    : content_(content), editor_(controls.content(std::move(content))) {
    auto* menus = new QHBoxLayout;
    menus->setSpacing(Style::small);
    addMenu(controls, *menus, text("Insert Field"), [this, fieldNames = std::move(fieldNames)](QMenu& menu) {
        for (const std::string& name : fieldNames())
            menu.addAction(FieldLabel::inMenu(name), this, [this, name] { append("{{" + name + "}}"); });
    });
    if (icons == Icons::offered)
        addMenu(controls, *menus, text("Insert Icon"), [this](QMenu& menu) {
            for (const std::string_view name : IconSet::names)
                menu.addAction(IconPictures::icon(name), text(name), this,
                               [this, name] { append("{icon:" + std::string(name) + "}"); });
        });
    menus->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(editor_);
    column->addLayout(menus);
}

void ContentBlock::addMenu(BoundControls& controls, QHBoxLayout& row, const QString& title,
                           std::function<void(QMenu&)> fill) {
    auto* button = new QToolButton;
    button->setText(title);
    button->setAccessibleName(title);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setFocusPolicy(Qt::TabFocus);
    auto* menu = new QMenu(button);
    connect(menu, &QMenu::aboutToShow, this, [menu, fill = std::move(fill)] {
        menu->clear();
        fill(*menu);
    });
    controls.onLetGo([menu] { menu->close(); });
    button->setMenu(menu);
    row.addWidget(button);
}

void ContentBlock::append(const std::string& words) {
    content_.write(content_.read() + words);
    editor_->moveCursor(QTextCursor::End);
}

}  // namespace quorvel
