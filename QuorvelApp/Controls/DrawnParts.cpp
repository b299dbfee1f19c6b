#include "Controls/DrawnParts.h"

#include <iterator>

namespace quorvel {

DrawnParts::DrawnParts(QWidget& widget, QAccessible::Role role) : QAccessibleWidget(&widget, role) {}

DrawnParts::~DrawnParts() {
    forgetFrom(0);
}

QAccessibleInterface* DrawnParts::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto found = parts_.find(index);
    if (found != parts_.end()) return QAccessible::accessibleInterface(found->second);
    DrawnPart* const part = makePart(index);
    parts_[index] = QAccessible::registerAccessibleInterface(part);
    return part;
}

int DrawnParts::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const part = dynamic_cast<const DrawnPart*>(child);
    return part && part->parent() == this ? part->index() : -1;
}

void DrawnParts::forgetFrom(int index) {
    while (!parts_.empty() && parts_.rbegin()->first >= index)
        QAccessible::deleteAccessibleInterface(parts_.extract(std::prev(parts_.end())).mapped());
}

}  // namespace quorvel
