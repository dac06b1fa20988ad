// What larkspin and its bridge among the client's windows say to each other, over the bridge's
// standard input and output. Both sides are built from this.
//
// Everything is in frames: the length of what follows in four bytes, then the bytes of a `Frame`.
// The bridge's first one is its greeting. After that each question has its answer, with the
// question's number, in the order of the questions; between them stand `seen` frames, which nobody
// has asked for. Numbers have four bytes, the lowest first; a text has its length before it, a list
// its count. Whatever comes from the other side may be anything: a frame that is longer than
// `mostFrame`, or can't be read to its very end, ends the connection.
#pragma once

#include "host/window_tree/window_calls.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin::bridge {

// Another one with each change of anything here. Both sides must have the same.
inline constexpr std::uint32_t version = 1;
inline constexpr std::string_view greetingText = "larkspin-bridge";

inline constexpr std::size_t mostFrame = 4'000'000; // bytes

// How long the bridge works on a question at most, and how long its answer is waited for: longer,
// since it is on its way and another process must get its turn.
inline constexpr int workMilliseconds = 300, waitMilliseconds = 600;

// How often the bridge looks at a text that it watches.
inline constexpr int lookMilliseconds = 100;

enum class Kind : std::uint8_t {
    greeting, // its text, its version, and why the bridge can do nothing, if so
    walk,     // a WindowWalk; answered by FoundWindows
    find,     // class, caption; by a window
    caption,  // window; by a text
    text,     // window; by a text
    send,     // window, message, two numbers; by a number
    sendText, // window, message, text; by nothing
    post,     // window, message, two numbers; by 1 or 0
    show,     // window, command; by nothing
    visible,  // window; by a number
    rows,     // list, RowRecord, most; by texts
    watch,    // a TextWatch, or nothing to watch none; by nothing, and then the first `seen`
    registry, // key, name; by a RegistryValue, or by nothing
    activate, // caption; by nothing
    keys,     // keys; by nothing
    seen,     // a WatchedText, from the bridge
};
inline constexpr Kind lastKind = Kind::seen;

// Kind, number, and what belongs to it.
struct Frame {
    Kind kind = Kind::greeting;
    std::uint32_t number = 0; // of a question and its answer; 0 for all else
    std::string body{};
};

// With the length in front.
std::string encoded(const Frame& frame);

// Takes bytes as they come, and gives the frames in them.
class FrameReader {
public:
    void add(std::string_view bytes) { bytes_.append(bytes); }
    std::optional<Frame> next(); // nothing while it isn't whole, or after an error
    bool isBroken() const { return broken_; }

private:
    std::string bytes_;
    std::size_t taken_ = 0;
    bool broken_ = false;
};

class Writer {
public:
    Writer& add(std::uint32_t number);
    Writer& add(std::string_view text);
    Writer& add(const std::vector<std::string>& texts);
    Writer& add(const WindowWalk& walk);
    Writer& add(const FoundWindows& found);
    Writer& add(const RowRecord& record);
    Writer& add(const TextWatch& watch);
    Writer& add(const WatchedText& text);
    Writer& add(const RegistryValue& value);
    Writer& addHandle(HostHandle handle) { return add(static_cast<std::uint32_t>(handle)); }
    std::string take() { return std::move(body_); }

private:
    Writer& addHandles(const std::vector<HostHandle>& handles);
    std::string body_;
};

// Reads what a Writer has written, in the same order. What isn't there reads as 0 or empty, and
// from then on the whole isn't good.
class Reader {
public:
    explicit Reader(std::string_view body) : rest_(body) {}

    std::uint32_t number();
    HostHandle handle() { return number(); }
    std::string text();
    std::vector<std::string> texts();
    WindowWalk walk();
    FoundWindows found();
    RowRecord record();
    TextWatch watch();
    WatchedText watched();
    RegistryValue registryValue();

    bool isAtEnd() const { return rest_.empty(); }
    bool isGood() const { return good_ && isAtEnd(); } // read to its end, and nothing was lacking

private:
    std::uint32_t count(std::size_t eachAtLeast);
    std::vector<HostHandle> handles();

    std::string_view rest_;
    bool good_ = true;
};

} // namespace larkspin::bridge
