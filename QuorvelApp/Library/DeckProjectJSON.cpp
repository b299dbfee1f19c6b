#include "Library/DeckProjectJSON.h"

#include "Cards/FieldMappingJSON.h"
#include "Foundation/JSONReader.h"
#include "Library/BookmarkJSON.h"
#include "Templates/SheetSettingsJSON.h"
#include "Templates/TemplateJSON.h"

namespace quorvel {

namespace {

void writeIfPresent(JSON& object, const char* key, const std::optional<Bookmark>& bookmark) {
    if (bookmark) object[key] = toJSON(*bookmark);
}

}  // namespace

JSON toJSON(const DeckProject& project) {
    JSON json{
        {"id", project.id.text()},
        {"name", project.name},
        {"template", toJSON(project.template_)},
        {"mapping", toJSON(project.mapping)},
        {"sheet", toJSON(project.sheet)},
        {"sheetIndex", project.sheetIndex},
        {"imageBleed", project.imageBleed},
        {"imageDPI", project.imageDPI},
        {"created", project.created},
    };
    writeIfPresent(json, "source", project.source);
    writeIfPresent(json, "artFolder", project.artFolder);
    writeIfPresent(json, "iconFolder", project.iconFolder);
    return json;
}

std::expected<DeckProject, JSONFailure> deckProjectFromJSON(const JSON& json) {
    JSONReader reader(json);
    DeckProject project;
    reader.read("id", project.id);
    reader.read("name", project.name);
    reader.read("template", project.template_, cardTemplateFromJSON);
    reader.read("mapping", project.mapping, fieldMappingFromJSON);
    reader.read("sheet", project.sheet, sheetSettingsFromJSON);
    reader.readIfPresent("source", project.source, bookmarkFromJSON);
    reader.readIfPresent("artFolder", project.artFolder, bookmarkFromJSON);
    reader.readIfPresent("iconFolder", project.iconFolder, bookmarkFromJSON);
    reader.read("sheetIndex", project.sheetIndex);
    reader.read("imageBleed", project.imageBleed);
    reader.read("imageDPI", project.imageDPI);
    reader.read("created", project.created);
    return reader.finish(std::move(project));
}

}  // namespace quorvel
