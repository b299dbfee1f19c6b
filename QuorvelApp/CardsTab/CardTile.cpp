#include "CardsTab/CardTile.h"

#include "Cards/Markup.h"
#include "Controls/Wording.h"

namespace quorvel {

QString CardTile::caption() const {
    const QString title = text(Markup::plainText(card.title())).simplified();
    return title.isEmpty() ? QStringLiteral("Row %1").arg(card.rowNumber) : title;
}

QString CardTile::badge() const {
    return printed == 1 ? QString() : QStringLiteral("×%1").arg(printed);
}

QString CardTile::accessibleLabel() const {
    return text(Markup::plainText(card.title())) + QStringLiteral(", ") + text(card.value("type")) +
           QStringLiteral(", ") + QString::number(printed) + QStringLiteral(" copies. ") +
           text(Markup::plainText(card.value("text")));
}

QString CardTile::accessibleHint() {
    return QStringLiteral("Double-click to edit the template with this card");
}

}  // namespace quorvel
