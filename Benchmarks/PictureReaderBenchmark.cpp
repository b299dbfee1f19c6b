// Reading pictures from files, as the cards of a deck do: by format, by size, with and without a colour profile.

#include "Pictures/PictureReader.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>
#include <vips/vips.h>

using namespace quorvel;

namespace {

/// A folder of pictures, made once and removed at the end.
class Pictures {
public:
    Pictures() {
        vips_init("benchmark");
        std::string pattern = (std::filesystem::temp_directory_path() / "quorvel-benchmark-XXXXXX").string();
        if (!mkdtemp(pattern.data())) std::abort();
        folder_ = pattern;
    }
    ~Pictures() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// Hills of colour with fine grain, saved as the name's extension says. `profile` is one that the library brings.
    std::filesystem::path make(const std::string& name, int width, int height, int bands, const char* profile) {
        const std::filesystem::path file = folder_ / name;
        if (std::filesystem::exists(file)) return file;
        std::vector<unsigned char> samples;
        samples.reserve(std::size_t(width) * std::size_t(height) * std::size_t(bands));
        unsigned grain = 1;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                for (int band = 0; band < bands; ++band) {
                    grain = grain * 1664525 + 1013904223;
                    samples.push_back(static_cast<unsigned char>(120 + 60 * std::sin(x * 0.011 * (band + 1)) +
                                                                 50 * std::cos(y * 0.017 - band) + (grain >> 29)));
                }
        VipsImage* raw =
            vips_image_new_from_memory(samples.data(), samples.size(), width, height, bands, VIPS_FORMAT_UCHAR);
        VipsImage* picture = nullptr;
        vips_copy(raw, &picture, "interpretation", VIPS_INTERPRETATION_sRGB, nullptr);
        VipsBlob* blob = nullptr;
        if (profile && vips_profile_load(profile, &blob, nullptr) == 0) {
            std::size_t size = 0;
            const void* data = vips_blob_get(blob, &size);
            vips_image_set_blob_copy(picture, VIPS_META_ICC_NAME, data, size);
            vips_area_unref(VIPS_AREA(blob));
        }
        if (vips_image_write_to_file(picture, file.c_str(), nullptr) != 0) std::abort();
        g_object_unref(picture);
        g_object_unref(raw);
        return file;
    }

private:
    std::filesystem::path folder_;
};

struct Kind {
    const char* name;
    int width, height, bands;
    const char* profile = nullptr;
};

std::filesystem::path fileOf(const Kind& kind) {
    static Pictures pictures;
    return pictures.make(kind.name, kind.width, kind.height, kind.bands, kind.profile);
}

void read(benchmark::State& state, Kind kind) {
    const auto file = fileOf(kind);
    for (auto _ : state)
        if (!PictureReader::read(file)) state.SkipWithError("not readable");
}

void header(benchmark::State& state, Kind kind) {
    const auto file = fileOf(kind);
    for (auto _ : state)
        if (!PictureReader::header(file)) state.SkipWithError("not readable");
}

constexpr Kind card{"card.jpg", 1500, 1000, 3}, large{"large.jpg", 2400, 1600, 3},
    largeInSRGB{"large-srgb.jpg", 2400, 1600, 3, "srgb"}, largeInP3{"large-p3.jpg", 2400, 1600, 3, "p3"},
    photograph{"photograph.jpg", 6000, 4000, 3}, drawing{"drawing.png", 2400, 1600, 4},
    poster{"poster.png", 4800, 3200, 4};

BENCHMARK_CAPTURE(read, jpeg1500x1000, card)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, jpeg2400x1600, large)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, jpeg2400x1600InSRGB, largeInSRGB)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, jpeg2400x1600InP3, largeInP3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, jpeg6000x4000, photograph)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, png2400x1600WithAlpha, drawing)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, png4800x3200WithAlpha, poster)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(header, jpeg1500x1000, card)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(header, png2400x1600WithAlpha, drawing)->Unit(benchmark::kMicrosecond);

}  // namespace
