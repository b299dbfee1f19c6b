#include "Check.h"
#include "Spreadsheet/XMLEvents.h"

#include <string>
#include <string_view>
#include <vector>

using namespace quorvel;

namespace {

struct Log {
    std::string events;
    std::vector<std::string> open;

    XMLEvents::OnStart onStart() {
        return [this](std::string_view name, const XMLAttributes& attributes) {
            open.emplace_back(name);
            CHECK(open.size() <= XMLEvents::deepestNesting);
            events += '<';
            events += name;
            attributes.findIf([&](std::string_view attribute) {
                CHECK(attributes.find(attribute).has_value());
                events += attribute;
                events += *attributes.find(attribute);
                return false;
            });
        };
    }

    XMLEvents::OnEnd onEnd() {
        return [this](std::string_view name, std::string& text) {
            CHECK(!open.empty() && open.back() == name);
            open.pop_back();
            events += '>';
            events += text;
        };
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view document(reinterpret_cast<const char*>(data), size);
    Log whole;
    const auto result = XMLEvents::parse(document, whole.onStart(), whole.onEnd());
    if (result) CHECK(whole.open.empty());
    if (!result) CHECK(!result.error().empty());

    Log pieces;
    XMLEvents parser(pieces.onStart(), pieces.onEnd());
    for (std::size_t i = 0, step = 1; i < size; i += step, step = step % 7 + 1) parser.push(document.substr(i, step));
    const auto again = parser.finish();
    CHECK(again.has_value() == result.has_value());
    if (result) CHECK(pieces.events == whole.events);
    return 0;
}
