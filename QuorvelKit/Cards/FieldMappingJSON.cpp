#include "Cards/FieldMappingJSON.h"

#include "Foundation/JSONReader.h"

namespace quorvel {

namespace {

using Columns = std::map<std::string, std::string>;

std::expected<Columns, JSONFailure> columnsFromJSON(const JSON& json) {
    JSONReader reader(json);
    Columns columns;
    if (json.is_object())
        for (const auto& entry : json.items()) reader.read(entry.key(), columns[entry.key()]);
    return reader.finish(std::move(columns));
}

}  // namespace

JSON toJSON(const FieldMapping& mapping) {
    return {{"columns", mapping.columns}};
}

std::expected<FieldMapping, JSONFailure> fieldMappingFromJSON(const JSON& json) {
    JSONReader reader(json);
    FieldMapping mapping;
    reader.read("columns", mapping.columns, columnsFromJSON);
    return reader.finish(std::move(mapping));
}

}  // namespace quorvel
