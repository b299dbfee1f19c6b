#include "Walk/Display.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <span>
#include <stdexcept>
#include <thread>
#include <utility>
#include <xcb/xcb.h>

namespace quorvel {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 120s;
constexpr auto betweenLooks = 50ms;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

}  // namespace

bool eventually(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(betweenLooks);
    }
    return true;
}

bool operator==(const Image& one, const Image& other) {
    return one.width() == other.width() && one.height() == other.height() &&
           std::memcmp(one.pixels(), other.pixels(), one.byteCount()) == 0;
}

Display::Display() {
    const auto size = std::to_string(whole.width) + "x" + std::to_string(whole.height) + "x24";
    server_ = std::make_unique<RunningProcess>(
        ProcessCall{.words = {"setpriv", "--pdeathsig", "TERM", "--", "Xvfb", "-displayfd", "1", "-screen", "0", size,
                              "-nolisten", "tcp", "-noreset"},
                    .output = ProcessCall::Output::piped});
    const std::string number = server_->nextLine();
    if (number.empty()) throw std::runtime_error("the X server doesn’t start: " + server_->wait().errors);
    name_ = ":" + number;
    connection_ = xcb_connect(name_.c_str(), nullptr);
    if (xcb_connection_has_error(connection_)) throw std::runtime_error("the X server doesn’t answer");
}

Display::~Display() {
    xcb_disconnect(connection_);
    // So that it takes its lock and its socket with it.
    server_->send(SIGTERM);
    server_->wait();
}

ProcessEnd Display::doTool(std::vector<std::string> words) const {
    words.insert(words.begin(), "xdotool");
    return RunningProcess(ProcessCall{.words = std::move(words), .environment = {{"DISPLAY", name_}}}).wait();
}

std::optional<std::string> Display::find(const std::string& title) const {
    const ProcessEnd found = doTool({"search", "--onlyvisible", "--name", "^" + title + "$"});
    const auto end = found.output.find('\n');
    return end == std::string::npos ? std::nullopt : std::optional(found.output.substr(0, end));
}

bool Display::focus(const std::string& title) const {
    return eventually([&] {
        const auto window = find(title);
        if (!window || doTool({"windowfocus", *window}).exitCode != 0) return false;
        return doTool({"getwindowfocus", "-f"}).output == *window + "\n";
    });
}

bool Display::isGone(const std::string& title) const {
    return eventually([&] { return !find(title); });
}

void Display::press(const std::vector<std::string>& keys) const {
    for (const std::string& key : keys)
        if (doTool({"key", key}).exitCode != 0) throw std::runtime_error("there is no key " + key);
}

void Display::type(const std::string& text) const {
    if (doTool({"type", text}).exitCode != 0) throw std::runtime_error("this can’t be typed: " + text);
}

Image Display::look(ScreenPart part) const {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const auto cookie = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root, std::int16_t(part.x),
                                      std::int16_t(part.y), std::uint16_t(part.width), std::uint16_t(part.height), ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, Free> reply(xcb_get_image_reply(connection_, cookie, nullptr));
    auto pixels = allocatePixels(part.width, part.height);
    const std::size_t count = std::size_t(part.width) * std::size_t(part.height);
    if (!reply || !pixels || std::size_t(xcb_get_image_data_length(reply.get())) != count * sizeof(std::uint32_t))
        throw std::runtime_error("the screen can’t be read");
    std::memcpy(pixels.get(), xcb_get_image_data(reply.get()), count * sizeof(std::uint32_t));
    for (std::uint32_t& pixel : std::span(pixels.get(), count)) pixel |= 0xFF000000;
    return {part.width, part.height, std::move(pixels), Image::Alpha::opaque};
}

Image Display::lookAtRest(ScreenPart part) const {
    constexpr int looks = 8;
    Image last = look(part);
    int same = 0;
    (void)eventually([&] {
        Image now = look(part);
        same = now == last ? same + 1 : 0;
        last = std::move(now);
        return same == looks;
    });
    return last;
}

bool Display::changes(ScreenPart part, const Image& before) const {
    return eventually([&] { return !(look(part) == before); });
}

}  // namespace quorvel
