#pragma once

#include "Drawing/Image.h"
#include "Support/Process.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

struct xcb_connection_t;

namespace quorvel {

/// A part of the screen, in pixels from its top left.
struct ScreenPart {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Waits for what another program does: looks again and again until `done`, at most for two minutes. False when it
/// never was.
[[nodiscard]] bool eventually(const std::function<bool()>& done);

/// An X server of its own without a window manager, and the hands and eyes of a user at it. The server ends with it, or
/// with this process. Throws std::runtime_error when something can't be done.
class Display {
public:
    static constexpr ScreenPart whole{0, 0, 1280, 820};

    Display();
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// For the variable DISPLAY.
    const std::string& name() const { return name_; }

    /// Waits for the window with exactly this title and gives it the keyboard. False when it doesn't come.
    [[nodiscard]] bool focus(const std::string& title) const;
    /// Waits until no window has this title.
    [[nodiscard]] bool isGone(const std::string& title) const;

    /// Presses keys one after the other, each as "ctrl+e" or "Return".
    void press(const std::vector<std::string>& keys) const;
    void type(const std::string& text) const;

    Image look(ScreenPart part = whole) const;
    /// Looks until nothing has moved for a moment.
    Image lookAtRest(ScreenPart part = whole) const;
    /// Waits until a part looks otherwise than in a picture of it, and is at rest.
    [[nodiscard]] bool changes(ScreenPart part, const Image& before) const;

private:
    ProcessEnd doTool(std::vector<std::string> words) const;
    std::optional<std::string> find(const std::string& title) const;

    std::unique_ptr<RunningProcess> server_;
    std::string name_;
    xcb_connection_t* connection_ = nullptr;
};

bool operator==(const Image& one, const Image& other);

}  // namespace quorvel
