// MakeSeeds FOLDER: writes a few sound inputs for every fuzz target into FOLDER/TARGET, for the fuzzer to start from.

#include "Foundation/AtomicFile.h"
#include "Samples/SampleDeck.h"
#include "Samples/SampleTemplates.h"
#include "Spreadsheet/CSV.h"
#include "Templates/TemplateJSON.h"

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>
#include <vips/vips.h>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

bool write(const fs::path& folder, std::initializer_list<std::string_view> texts) {
    fs::create_directories(folder);
    int number = 0;
    for (const auto text : texts)
        if (!AtomicFile::write(folder / std::to_string(++number), text)) return false;
    return true;
}

/// A small picture in every format that the reader takes and the library can write.
bool writePictures(const fs::path& folder) {
    fs::create_directories(folder);
    std::vector<unsigned char> pixels(24 * 16 * 4);
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<unsigned char>(i * 7);
    VipsImage* rgba = vips_image_new_from_memory(pixels.data(), pixels.size(), 24, 16, 4, VIPS_FORMAT_UCHAR);
    VipsImage* rgb = nullptr;
    VipsImage* grey = nullptr;
    VipsImage* deep = nullptr;
    if (!rgba || vips_extract_band(rgba, &rgb, 0, "n", 3, nullptr) || vips_extract_band(rgba, &grey, 0, nullptr) ||
        vips_cast(rgba, &deep, VIPS_FORMAT_USHORT, nullptr))
        return false;
    rgba->Type = rgb->Type = VIPS_INTERPRETATION_sRGB;
    grey->Type = VIPS_INTERPRETATION_B_W;
    deep->Type = VIPS_INTERPRETATION_RGB16;
    bool ok = true;
    for (const char* name : {"rgba.png", "rgba.webp", "rgba.tif"})
        ok &= !vips_image_write_to_file(rgba, (folder / name).c_str(), nullptr);
    for (const char* name : {"rgb.jpg", "rgb.png", "rgb.tif"})
        ok &= !vips_image_write_to_file(rgb, (folder / name).c_str(), nullptr);
    for (const char* name : {"grey.jpg", "grey.png"})
        ok &= !vips_image_write_to_file(grey, (folder / name).c_str(), nullptr);
    for (const char* name : {"deep.png", "deep.tif"})
        ok &= !vips_image_write_to_file(deep, (folder / name).c_str(), nullptr);
    g_object_unref(deep);
    g_object_unref(grey);
    g_object_unref(rgb);
    g_object_unref(rgba);
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || vips_init(argv[0])) return 2;
    const fs::path top = argv[1];
    bool ok = true;
    ok &= write(top / "CSVFuzz",
                {CSV::write(SampleDeck::rows()), "a;b;c\n1,5;\"x\"\"y\";\r\n", "\xEF\xBB\xBFName\tQty\nAxe\tx3\n",
                 std::string_view("\xFF\xFEN\0a\0\n\0", 8), "caf\xE9,\x92\n", "PK\x03\x04"});
    ok &= write(top / "MarkupFuzz", {"**bold** *it* {icon:coin} \\* \\n", "***x***", "*a **b* c**",
                                     "{ICON:a-b_2}{icon:", "e\xCC\x81\r\n*"});
    ok &= write(top / "IconNamesFuzz",
                {"coin, 2 leaf; star*3 x4 fox", "3×coin coin x100", "{icon:coin}", "99999999999999999999 coin"});
    ok &= write(top / "PlaceholdersFuzz", {"{{title}} {{ GRÖSSE }}", "{{a{{b}}", "{{", "}} {{x"});
    ok &= write(top / "QuantityFuzz", {"3", "x3", "3 ×", "1e2", "2.0", "-1", "inf", "99999999999999999999"});
    ok &= write(top / "HexColorFuzz", {"#5e8c4a", "5E8C4A80", "+12345", " #GGGGGG"});
    ok &= write(top / "TemplateJSONFuzz",
                {templateFileText(SampleTemplates::make(SampleTemplates::Kind::classic, "Game")),
                 templateFileText(SampleTemplates::make(SampleTemplates::Kind::mini, "Game")),
                 R"({"paper":"a4","gutterMM":1.5})"});
    ok &= writePictures(top / "PictureFuzz");
    return ok ? 0 : 1;
}
