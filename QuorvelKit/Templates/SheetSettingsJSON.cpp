#include "Templates/SheetSettingsJSON.h"

#include "Foundation/JSONReader.h"

namespace quorvel {

JSON toJSON(const SheetSettings& settings) {
    return {
        {"paper", textOf(settings.paper)},         {"orientation", textOf(settings.orientation)},
        {"spacing", textOf(settings.spacing)},     {"gutterMM", settings.gutterMM},
        {"marginMM", settings.marginMM},           {"includeBleed", settings.includeBleed},
        {"cutMarks", settings.cutMarks},           {"duplex", settings.duplex},
        {"flip", textOf(settings.flip)},           {"backOffsetXMM", settings.backOffsetXMM},
        {"backOffsetYMM", settings.backOffsetYMM},
    };
}

std::expected<SheetSettings, JSONFailure> sheetSettingsFromJSON(const JSON& json) {
    JSONReader reader(json);
    SheetSettings settings;
    reader.readIfPresent("paper", settings.paper);
    reader.readIfPresent("orientation", settings.orientation);
    reader.readIfPresent("spacing", settings.spacing);
    reader.readIfPresent("gutterMM", settings.gutterMM);
    reader.readIfPresent("marginMM", settings.marginMM);
    reader.readIfPresent("includeBleed", settings.includeBleed);
    reader.readIfPresent("cutMarks", settings.cutMarks);
    reader.readIfPresent("duplex", settings.duplex);
    reader.readIfPresent("flip", settings.flip);
    reader.readIfPresent("backOffsetXMM", settings.backOffsetXMM);
    reader.readIfPresent("backOffsetYMM", settings.backOffsetYMM);
    return reader.finish(settings);
}

}  // namespace quorvel
