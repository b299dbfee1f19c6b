#include "Drawing/PDFDate.h"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace quorvel::PDFDate {

std::optional<std::string> fromEnvironment() {
    const char* variable = std::getenv("SOURCE_DATE_EPOCH");
    if (!variable) return {};
    const std::string_view text = variable;
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    constexpr std::int64_t lastSecond = 253402300799;  // of the year 9999
    if (error != std::errc() || end != text.data() + text.size() || seconds < 0 || seconds > lastSecond) return {};

    const std::chrono::sys_seconds moment{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    char iso[64];
    std::snprintf(iso, sizeof iso, "%04d-%02u-%02uT%02d:%02d:%02d+00:00", int(date.year()), unsigned(date.month()),
                  unsigned(date.day()), int(time.hours().count()), int(time.minutes().count()),
                  int(time.seconds().count()));
    return iso;
}

void complete(std::string& pdf) {
    constexpr std::string_view key = "/CreationDate (";
    constexpr std::string_view bare = "20231114221320+00'00)";
    const std::size_t found = pdf.rfind(key);
    if (found == std::string::npos) return;
    const std::size_t date = found + key.size();
    if (pdf.compare(date, 2, "D:") == 0 || date + bare.size() > pdf.size()) return;
    constexpr std::size_t digits = 14;
    if (pdf.compare(date + digits, bare.size() - digits, bare.substr(digits)) != 0) return;

    std::string complete = "D:" + pdf.substr(date, digits) + "Z)";
    complete.resize(bare.size(), ' ');
    pdf.replace(date, bare.size(), complete);
}

}  // namespace quorvel::PDFDate
