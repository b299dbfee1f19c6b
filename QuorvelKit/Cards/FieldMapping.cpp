#include "Cards/FieldMapping.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <set>
#include <span>
#include <string_view>
#include <utility>

namespace quorvel {

namespace {

using std::string_view;

constexpr string_view titleAliases[] = {"title", "name", "cardname", "cardtitle"};
constexpr string_view textAliases[] = {"text", "rules", "rulestext", "body", "description", "effect", "ability"};
constexpr string_view costAliases[] = {"cost", "price", "value", "points"};
constexpr string_view typeAliases[] = {"type", "kind", "category", "class", "suit", "cardtype"};
constexpr string_view artAliases[] = {"art",          "image",     "picture", "artwork",
                                      "illustration", "imagepath", "artpath", "file"};
constexpr string_view iconsAliases[] = {"icons", "icon", "symbols", "symbol", "resources"};
constexpr string_view quantityAliases[] = {"quantity", "qty", "count", "copies", "number", "amount", "x"};

constexpr std::pair<Field, std::span<const string_view>> aliasTable[] = {
    {Field::title, titleAliases},       {Field::text, textAliases}, {Field::cost, costAliases},
    {Field::type, typeAliases},         {Field::art, artAliases},   {Field::icons, iconsAliases},
    {Field::quantity, quantityAliases},
};

/// A header as the aliases are written: lower-case letters and numbers only, "Card Name" as "cardname".
std::string normalForm(string_view header) {
    const std::string lower = Text::lowercased(header);
    std::string form;
    for (const string_view character : Text::characters(lower))
        if (Text::isLetterOrNumber(character)) form += character;
    return form;
}

}  // namespace

std::optional<std::string> FieldMapping::column(Field field) const {
    const auto found = columns.find(std::string(textOf(field)));
    if (found == columns.end()) return std::nullopt;
    return found->second;
}

void FieldMapping::setColumn(Field field, std::optional<std::string> header) {
    std::string key(textOf(field));
    if (header) {
        columns.insert_or_assign(std::move(key), *std::move(header));
    } else {
        columns.erase(key);
    }
}

FieldMapping FieldMapping::guess(const std::vector<std::string>& headers) {
    std::vector<std::string> forms;
    forms.reserve(headers.size());
    for (const std::string& header : headers) forms.push_back(normalForm(header));

    FieldMapping mapping;
    std::vector<bool> taken(headers.size());
    const auto firstFree = [&](string_view alias) {
        std::size_t i = 0;
        while (i < forms.size() && (taken[i] || forms[i] != alias)) ++i;
        return i;
    };
    for (const auto& [field, aliases] : aliasTable) {
        for (const string_view alias : aliases) {
            const std::size_t i = firstFree(alias);
            if (i == headers.size()) continue;
            taken[i] = true;
            mapping.setColumn(field, headers[i]);
            break;
        }
    }
    return mapping;
}

FieldMapping FieldMapping::reconcile(const FieldMapping& old, const std::vector<std::string>& headers) {
    FieldMapping mapping;
    std::set<string_view> used;
    for (const auto& [field, header] : old.columns) {
        if (std::find(headers.begin(), headers.end(), header) == headers.end()) continue;
        mapping.columns.emplace(field, header);
        used.insert(header);
    }
    for (const auto& [field, header] : guess(headers).columns)
        if (!used.contains(header)) mapping.columns.try_emplace(field, header);
    return mapping;
}

}  // namespace quorvel
