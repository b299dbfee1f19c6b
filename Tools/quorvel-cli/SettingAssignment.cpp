#include "SettingAssignment.h"

#include "Foundation/EnumText.h"
#include "Foundation/Text.h"
#include "Wording.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <type_traits>
#include <variant>

namespace quorvel::CommandLine {
namespace {

using Member = std::variant<Paper SheetSettings::*, Orientation SheetSettings::*, Spacing SheetSettings::*,
                            DuplexFlip SheetSettings::*, double SheetSettings::*, bool SheetSettings::*>;

struct Setting {
    std::string_view key;
    Member member;
};

const std::array settings{
    Setting{"paper", &SheetSettings::paper},
    Setting{"orientation", &SheetSettings::orientation},
    Setting{"spacing", &SheetSettings::spacing},
    Setting{"gutterMM", &SheetSettings::gutterMM},
    Setting{"marginMM", &SheetSettings::marginMM},
    Setting{"includeBleed", &SheetSettings::includeBleed},
    Setting{"cutMarks", &SheetSettings::cutMarks},
    Setting{"duplex", &SheetSettings::duplex},
    Setting{"flip", &SheetSettings::flip},
    Setting{"backOffsetXMM", &SheetSettings::backOffsetXMM},
    Setting{"backOffsetYMM", &SheetSettings::backOffsetYMM},
};

template <class T>
std::optional<T> parseValue(std::string_view text) {
    if constexpr (std::is_same_v<T, double>) {
        const auto number = Text::parseDecimal(text);
        return number && std::isfinite(*number) ? number : std::nullopt;
    } else if constexpr (std::is_same_v<T, bool>) {
        if (text == "true") return true;
        if (text == "false") return false;
        return std::nullopt;
    } else {
        return parseEnum<T>(text);
    }
}

template <class T>
std::string choices() {
    if constexpr (std::is_same_v<T, double>) {
        return "a number of millimetres";
    } else if constexpr (std::is_same_v<T, bool>) {
        return "true or false";
    } else {
        return enumeration(namesOf<T>(), "or");
    }
}

}  // namespace

std::expected<SettingAssignment, std::string> parseSetting(std::string_view assignment) {
    const auto equals = assignment.find('=');
    if (equals == std::string_view::npos)
        return std::unexpected("takes KEY=VALUE, such as paper=a4, and not “" + std::string(assignment) + "”");
    const std::string key(assignment.substr(0, equals));
    const std::string value(assignment.substr(equals + 1));

    const auto* const setting = std::ranges::find(settings, key, &Setting::key);
    if (setting == settings.end()) {
        std::vector<std::string_view> keys(settings.size());
        std::ranges::transform(settings, keys.begin(), &Setting::key);
        return std::unexpected("knows no “" + key + "”, only " + enumeration(keys, "and"));
    }
    const auto assign = [&]<class T>(T SheetSettings::* member) -> std::expected<SettingAssignment, std::string> {
        const auto parsed = parseValue<T>(value);
        if (!parsed) return std::unexpected(key + " takes " + choices<T>() + ", and not “" + value + "”");
        return [member, parsed](SheetSettings& target) { target.*member = *parsed; };
    };
    return std::visit(assign, setting->member);
}

std::vector<std::string> settingLines() {
    std::vector<std::string> lines;
    lines.reserve(settings.size());
    for (const Setting& setting : settings) {
        const auto choicesOf = []<class T>(T SheetSettings::*) { return choices<T>(); };
        lines.push_back(std::string(setting.key) + ": " + std::visit(choicesOf, setting.member));
    }
    return lines;
}

}  // namespace quorvel::CommandLine
