// MakeBenchmarkDeck FOLDER CARDS PICTURES: a deck of CARDS rows in FOLDER/deck.csv whose art is PICTURES different JPEG
// photographs of 1500 × 1000 pixels, or the sample deck's fourteen pictures when PICTURES is 0.

#include "Foundation/AtomicFile.h"
#include "Foundation/Parallel.h"
#include "Samples/SampleDeck.h"
#include "Spreadsheet/CSV.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>
#include <vips/vips.h>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

/// Something with the statistics of a photograph: smooth light, edges at every scale, grain.
std::vector<unsigned char> photograph(int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    const auto uniform = [&] { return float(random()) / 4294967296.0f; };
    std::vector<float> light(std::size_t(width) * std::size_t(height), 128.0f);
    std::vector<float> sines(static_cast<std::size_t>(width)), cosines(static_cast<std::size_t>(width));
    for (int octave = 0; octave < 7; ++octave)
        for (int i = 0; i < 3; ++i) {
            const float frequency = std::pow(2.0f, float(octave)) * 6.28f / float(width);
            const float angle = uniform() * 6.28f, phase = uniform() * 6.28f;
            const float weight = 26 * std::pow(0.6f, float(octave));
            for (int x = 0; x < width; ++x) {
                sines[std::size_t(x)] = std::sin(frequency * std::cos(angle) * float(x));
                cosines[std::size_t(x)] = std::cos(frequency * std::cos(angle) * float(x));
            }
            for (int y = 0; y < height; ++y) {
                const float across = frequency * std::sin(angle) * float(y) + phase;
                const float s = weight * std::cos(across), c = weight * std::sin(across);
                float* row = light.data() + std::size_t(y) * std::size_t(width);
                for (std::size_t x = 0; x < std::size_t(width); ++x) row[x] += s * sines[x] + c * cosines[x];
            }
        }
    for (int i = 0; i < 40; ++i) {
        const int radius = 10 + int(uniform() * 120), tone = int(uniform() * 120) - 60;
        const int centreX = int(uniform() * float(width)), centreY = int(uniform() * float(height));
        for (int y = std::max(0, centreY - radius); y < std::min(height, centreY + radius); ++y)
            for (int x = std::max(0, centreX - radius); x < std::min(width, centreX + radius); ++x)
                if ((x - centreX) * (x - centreX) + (y - centreY) * (y - centreY) < radius * radius)
                    light[std::size_t(y) * std::size_t(width) + std::size_t(x)] += float(tone);
    }
    std::vector<unsigned char> pixels(light.size() * 3);
    for (std::size_t i = 0; i < light.size(); ++i) {
        const float grain = float(random() % 13) - 6;
        for (std::size_t channel = 0; channel < 3; ++channel)
            pixels[i * 3 + channel] =
                static_cast<unsigned char>(std::clamp(light[i] * (0.7f + 0.2f * float(channel)) + grain, 0.0f, 255.0f));
    }
    return pixels;
}

bool writePhotograph(const fs::path& path, unsigned seed) {
    constexpr int width = 1500, height = 1000;
    const auto pixels = photograph(width, height, seed);
    VipsImage* image = vips_image_new_from_memory(pixels.data(), pixels.size(), width, height, 3, VIPS_FORMAT_UCHAR);
    if (!image) return false;
    image->Type = VIPS_INTERPRETATION_sRGB;
    const bool ok = vips_jpegsave(image, path.c_str(), "Q", 88, nullptr) == 0;
    g_object_unref(image);
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4 || vips_init(argv[0])) {
        std::fputs("usage: MakeBenchmarkDeck FOLDER CARDS PICTURES\n", stderr);
        return 2;
    }
    const fs::path folder = argv[1];
    const int cards = std::atoi(argv[2]), pictures = std::atoi(argv[3]);
    fs::create_directories(folder / "art");
    if (pictures == 0) {
        if (!SampleDeck::write(folder)) return 1;
    } else {
        forEachInOrder(
            std::size_t(pictures),
            [&](std::size_t i) {
                const fs::path path = folder / "art" / ("photo" + std::to_string(i) + ".jpg");
                if (!fs::exists(path)) writePhotograph(path, unsigned(i) + 1);
            },
            [](std::size_t) { return true; }, processorCount(), 4);
    }
    const TextRows sample = SampleDeck::rows();
    TextRows rows;
    const auto append = [&](std::size_t source, int card) {
        for (std::size_t column = 0; column < sample.cellCount(source); ++column) {
            if (card >= 0 && column == 0)
                rows.appendCell(std::string(sample.cell(source, 0)) + " " + std::to_string(card + 1));
            else if (card >= 0 && column == 4 && pictures)
                rows.appendCell("art/photo" + std::to_string(card % pictures) + ".jpg");
            else if (card >= 0 && column == 6)
                rows.appendCell("1");
            else
                rows.appendCell(sample.cell(source, column));
        }
        rows.endRow();
    };
    append(0, -1);
    for (int card = 0; card < cards; ++card) append(1 + std::size_t(card) % (sample.rowCount() - 1), card);
    return AtomicFile::write(folder / "deck.csv", CSV::write(rows)) ? 0 : 1;
}
