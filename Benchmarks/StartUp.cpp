// StartUp QUORVEL DECKS RUNS: milliseconds from the start of the program to its first painted window, with DECKS decks
// in the library, on the X server of $DISPLAY, which shows nothing else. Measured from outside: by the server's word
// that a window was mapped, and by the first look at the screen that finds its middle painted.

#include "Foundation/AtomicFile.h"
#include "Library/Library.h"
#include "Samples/SampleDeck.h"
#include "Samples/SampleTemplates.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Answer = std::unique_ptr<T, Free>;

void fillLibrary(const fs::path& applicationSupport, int decks) {
    const fs::path folder = applicationSupport / "Sample Deck" / "Benchmark";
    if (!SampleDeck::write(folder)) std::exit(1);
    fs::path spreadsheet;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".csv") spreadsheet = entry.path();
    for (int i = 0; i < decks; ++i) {
        DeckProject deck;
        deck.id = UUID::random();
        deck.name = "Deck " + std::to_string(i + 1);
        deck.template_ = SampleTemplates::make(SampleTemplates::Kind(i % 3), deck.name);
        deck.source = Bookmark::plain(spreadsheet, spreadsheet.filename());
        deck.created = i;
        if (!Library{applicationSupport}.saveDeck(deck)) std::exit(1);
    }
}

struct Screen {
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;

    /// Whether the middle of the window shows more than one colour: what is behind it shows one.
    bool isPainted(const xcb_get_geometry_reply_t& window) const {
        const auto wide = std::min<int>(window.width, width - window.x);
        const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root, window.x,
                                          std::int16_t(window.y + window.height / 2), std::uint16_t(wide), 1, ~0U);
        const Answer<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
        if (!image) return false;
        const auto* bytes = xcb_get_image_data(image.get());
        const auto size = std::size_t(xcb_get_image_data_length(image.get()));
        for (std::size_t i = 4; i + 4 <= size; i += 4)
            if (!std::equal(bytes, bytes + 3, bytes + i)) return true;
        return false;
    }

    std::optional<xcb_window_t> mapped() const {
        while (const Answer<xcb_generic_event_t> event{xcb_poll_for_event(connection)})
            if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY)
                return reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
        return std::nullopt;
    }

    Answer<xcb_get_geometry_reply_t> geometry(xcb_window_t window) const {
        return Answer<xcb_get_geometry_reply_t>(
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    }
};

struct Times {
    double mapped = 0;
    double painted = 0;
};

std::optional<Times> start(const Screen& screen, const char* program) {
    const auto begin = Clock::now();
    const auto passed = [begin] { return std::chrono::duration<double, std::milli>(Clock::now() - begin).count(); };
    const pid_t child = fork();
    if (child == 0) {
        execl(program, program, nullptr);
        _exit(127);
    }
    Times times;
    xcb_window_t window = 0;
    while (times.painted == 0 && passed() < 30'000) {
        if (window == 0)
            if (const auto found = screen.mapped())
                if (const auto geometry = screen.geometry(*found); geometry && geometry->width >= 800) {
                    window = *found;
                    times.mapped = passed();
                }
        if (window != 0)
            if (const auto geometry = screen.geometry(window); geometry && screen.isPainted(*geometry))
                times.painted = passed();
        usleep(500);
    }
    kill(child, SIGTERM);
    int status = 0;
    waitpid(child, &status, 0);
    while (screen.mapped()) {
    }
    if (times.painted == 0 || status != 0) return std::nullopt;
    return times;
}

}  // namespace

int main(int argc, char** argv) {
    const char* home = std::getenv("XDG_DATA_HOME");
    if (argc != 4 || !home) return 2;
    fillLibrary(fs::path(home) / "Quorvel", std::atoi(argv[2]));

    Screen screen;
    screen.connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(screen.connection)) return 1;
    const xcb_screen_t* first = xcb_setup_roots_iterator(xcb_get_setup(screen.connection)).data;
    screen.root = first->root;
    screen.width = first->width_in_pixels;
    screen.height = first->height_in_pixels;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(screen.connection, screen.root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(screen.connection);

    std::vector<double> mapped, painted;
    for (int i = 0; i < std::max(1, std::atoi(argv[3])); ++i) {
        const auto times = start(screen, argv[1]);
        if (!times) return std::fprintf(stderr, "StartUp: no painted window, or no clean end\n"), 1;
        mapped.push_back(times->mapped);
        painted.push_back(times->painted);
    }
    const auto print = [](const char* what, std::vector<double> times) {
        std::ranges::sort(times);
        std::printf("%-16s median %6.0f ms   fastest %6.0f ms   slowest %6.0f ms\n", what, times[times.size() / 2],
                    times.front(), times.back());
    };
    print("window mapped", mapped);
    print("window painted", painted);
    xcb_disconnect(screen.connection);
}
