#include "Check.h"
#include "Templates/SheetSettingsJSON.h"
#include "Templates/TemplateJSON.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto template_ = templateFromFileText(text)) {
        auto again = templateFromFileText(templateFileText(*template_));
        CHECK(again.has_value());
        again->id = template_->id;
        CHECK(*again == *template_);
    }
    if (const auto json = parseJSON(text))
        if (const auto settings = sheetSettingsFromJSON(*json)) {
            const auto again = sheetSettingsFromJSON(toJSON(*settings));
            CHECK(again && *again == *settings);
        }
    return 0;
}
