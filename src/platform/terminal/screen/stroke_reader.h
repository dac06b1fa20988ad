// The bytes that a terminal sends, taken apart into strokes. A small table holds the keys of all
// terminals that are in use: they send nearly the same ones. A library would keep a buffer of its
// own, of a fixed size, through which a long paste would have to go, and wait for the rest of a key
// by itself; here the loop does that.
#pragma once

#include "platform/terminal/screen/strokes.h"
#include "shell/event_loop.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class StrokeReader {
public:
    // The strokes that end with these bytes, which have come at that moment.
    std::vector<Stroke> take(std::string_view bytes, Nanoseconds now);

    // How long it makes sense to wait for what is still to come: of a key, which may be one by
    // itself, such as Escape, or of a paste. Nothing when nothing is awaited.
    std::optional<Nanoseconds> patience() const;

    // The strokes that have come so far, after that time.
    std::vector<Stroke> giveUp();

    // What is pasted beyond that is dropped: it must not fill the memory.
    static constexpr std::size_t longestPaste = std::size_t{16} << 20; // bytes

private:
    void takePasted(std::string_view& bytes, std::vector<Stroke>& strokes);
    Stroke endPaste();
    void tellSecondPress(MouseStroke& mouse, Nanoseconds now);

    std::string bytes_;                // of a key whose rest hasn't come
    std::optional<std::string> paste_; // while one is coming
    std::string pasteEnd_;             // what may be the beginning of its end
    std::optional<MouseStroke> lastPress_;
    Nanoseconds pressedAt_{};
};

} // namespace larkspin
