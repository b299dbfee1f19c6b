#include "Model/TemplateFiles.h"

#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Printing/ExportWork.h"
#include "Templates/TemplateJSON.h"

namespace quorvel::TemplateFiles {
namespace {

/// No design comes near it, and a mistaken file doesn't fill the memory.
constexpr std::uint64_t largestFile = 8u << 20;

const FileType templateFile{"Card template", {"json"}};

}  // namespace

std::expected<void, std::string> exportTemplate(Desktop& desktop, CardTemplate template_) {
    const auto file =
        desktop.chooseSaveFile({"Export Template", templateFile, ExportWork::proposedName(template_.name, ".json")});
    if (!file) return {};
    if (const auto written = AtomicFile::write(*file, templateFileText(template_)); !written)
        return std::unexpected(written.error().description());
    return {};
}

std::expected<std::optional<CardTemplate>, std::string> importTemplate(Desktop& desktop) {
    const auto file = desktop.chooseFile({"Import Template", "", {templateFile}});
    if (!file) return std::nullopt;
    const auto text = FileBytes::read(*file, largestFile);
    if (!text) return std::unexpected(std::string(notATemplateMessage));
    auto template_ = templateFromFileText(*text);
    if (!template_) return std::unexpected(std::string(notATemplateMessage));
    return std::move(*template_);
}

}  // namespace quorvel::TemplateFiles
