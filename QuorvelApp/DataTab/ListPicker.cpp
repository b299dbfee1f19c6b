#include "DataTab/ListPicker.h"

#include <QListView>
#include <algorithm>

namespace quorvel {
namespace {

constexpr int idealWidth = 184;

}  // namespace

ListPicker::ListPicker(QWidget* parent) : QComboBox(parent) {
    // By the length that is asked for, not by that of any entry: nobody measures thousands.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(6);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setMaxVisibleItems(20);
    auto* list = new QListView(this);
    list->setAccessibleName(QStringLiteral("Choices"));
    list->setUniformItemSizes(true);
    list->setTextElideMode(Qt::ElideMiddle);
    setView(list);
}

QSize ListPicker::sizeHint() const {
    return {std::max(idealWidth, minimumSizeHint().width()), QComboBox::sizeHint().height()};
}

void ListPicker::show(int index, const QString& missing) {
    const QString placeholder = index < 0 ? missing : QString();
    if (placeholder != placeholderText()) setPlaceholderText(placeholder);
    if (index != currentIndex()) setCurrentIndex(index);
}

}  // namespace quorvel
