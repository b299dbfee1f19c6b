#include "CardsTab/BannerList.h"

#include "Controls/Wording.h"
#include "Desktop/Desktop.h"

#include <QStringList>
#include <algorithm>

namespace quorvel {
namespace {

constexpr std::size_t namedPictures = 3;
constexpr std::size_t namedRows = 6;

/// The first `limit` of `items`, each made a text, as a list.
template <class Items, class ToText>
QString firstOf(const Items& items, std::size_t limit, ToText toText) {
    QStringList texts;
    for (std::size_t i = 0; i < std::min(limit, items.size()); ++i) texts << toText(items[i]);
    return texts.join(QStringLiteral(", "));
}

}  // namespace

QString Banner::title(Action action) {
    switch (action) {
        case Action::none:
            return {};
        case Action::chooseSpreadsheet:
            return QStringLiteral("Choose Spreadsheet…");
        case Action::chooseArtFolder:
            return QStringLiteral("Choose Art Folder…");
    }
    return {};
}

std::vector<Banner> bannersFor(const OpenDeck& open) {
    std::vector<Banner> banners;
    if (open._loadError)
        banners.push_back({QStringLiteral("exclamationmark.triangle"), Banner::Tone::warning, text(*open._loadError),
                           Banner::Action::chooseSpreadsheet});
    if (const auto& missing = open._missingArt; !missing.empty()) {
        const QString names = firstOf(missing, namedPictures, [](const std::string& name) { return text(name); });
        banners.push_back({QStringLiteral("photo.badge.exclamationmark"), Banner::Tone::warning,
                           QString::number(missing.size()) + QStringLiteral(" pictures can’t be opened (") + names +
                               QStringLiteral("). Choose the folder they’re in so ") + text(appName) +
                               QStringLiteral(" may read it."),
                           Banner::Action::chooseArtFolder});
    }
    if (const auto& bad = open._deck->badQuantities; !bad.empty()) {
        const QString rows = firstOf(bad, namedRows, [](std::int64_t row) { return QString::number(row); });
        banners.push_back(
            {QStringLiteral("number"), Banner::Tone::quiet,
             QStringLiteral("Rows ") + rows + QStringLiteral(" have a quantity that isn’t a number; they print once."),
             Banner::Action::none});
    }
    return banners;
}

}  // namespace quorvel
