#include "TestProfiles.h"

#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

namespace quorvel::TestProfiles {
namespace {

using namespace std::string_literals;

std::string number(std::uint32_t value, int size) {
    std::string bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) bytes += char(value >> shift & 255);
    return bytes;
}

std::string fixed(double value) {
    return number(std::uint32_t(std::int32_t(std::lround(value * 65536))), 4);
}

std::string xyz(const Primary& primary) {
    std::string bytes = "XYZ \0\0\0\0"s;
    for (const double value : primary) bytes += fixed(value);
    return bytes;
}

std::string description() {
    const std::string text = "a test"s + '\0';
    return "desc\0\0\0\0"s + number(std::uint32_t(text.size()), 4) + text + std::string(4 + 4 + 2 + 1 + 67, '\0');
}

std::string profile(std::string_view space, const std::vector<std::pair<std::string, std::string>>& tags) {
    std::string table = number(std::uint32_t(tags.size()), 4), data;
    const std::size_t start = 128 + 4 + 12 * tags.size();
    for (const auto& [name, bytes] : tags) {
        table += name + number(std::uint32_t(start + data.size()), 4) + number(std::uint32_t(bytes.size()), 4);
        data += bytes + std::string((4 - bytes.size() % 4) % 4, '\0');
    }
    std::string header(128, '\0');
    const auto put = [&](std::size_t offset, std::string_view bytes) { header.replace(offset, bytes.size(), bytes); };
    put(0, number(std::uint32_t(start + data.size()), 4));
    put(8, "\x02\x10"s);
    put(12, "mntr");
    put(16, space);
    put(20, "XYZ ");
    put(24, number(2024, 2) + number(1, 2) + number(1, 2));
    put(36, "acsp");
    put(68, fixed(0.9642) + fixed(1.0) + fixed(0.8249));
    return header + table + data;
}

}  // namespace

std::string sRGBTable(int entries) {
    std::string bytes = "curv\0\0\0\0"s + number(std::uint32_t(entries), 4);
    for (int i = 0; i < entries; ++i) {
        const double x = double(i) / (entries - 1);
        const double light = x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
        bytes += number(std::uint32_t(std::lround(light * 65535)), 2);
    }
    return bytes;
}

std::string sRGBFormula() {
    return "para\0\0\0\0\0\x03\0\0"s + fixed(2.4) + fixed(1 / 1.055) + fixed(0.055 / 1.055) + fixed(1 / 12.92) +
           fixed(0.04045);
}

std::string power(double exponent) {
    return "curv\0\0\0\0"s + number(1, 4) + number(std::uint32_t(std::lround(exponent * 256)), 2);
}

std::string rgb(const Primary& red, const Primary& green, const Primary& blue, const std::string& curve) {
    return profile("RGB ", {{"desc", description()},
                            {"cprt", "text\0\0\0\0none\0"s},
                            {"wtpt", xyz({0.9642, 1, 0.8249})},
                            {"rXYZ", xyz(red)},
                            {"gXYZ", xyz(green)},
                            {"bXYZ", xyz(blue)},
                            {"rTRC", curve},
                            {"gTRC", curve},
                            {"bTRC", curve}});
}

std::string grey(const std::string& curve) {
    return profile("GRAY", {{"desc", description()},
                            {"cprt", "text\0\0\0\0none\0"s},
                            {"wtpt", xyz({0.9642, 1, 0.8249})},
                            {"kTRC", curve}});
}

}  // namespace quorvel::TestProfiles
