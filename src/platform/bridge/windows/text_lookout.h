// Looks at a text that grows in another process, as often and as deep as is needed to see a change
// of it.
#pragma once

#include "platform/bridge/windows/sent_messages.h"

#include <optional>
#include <string_view>

namespace larkspin::bridge {

class TextLookout {
public:
    explicit TextLookout(SentMessages& messages) : messages_(messages) {}

    void watch(const TextWatch& watch);
    void watchNothing() { watch_.reset(); }
    bool isOn() const { return watch_.has_value(); }

    // What is there, if it is another than at the last look. Takes no longer than a moment.
    const WatchedText* look();

private:
    struct Outline { // all but the text
        WatchedText::State state = WatchedText::State::none;
        HWND window = nullptr, text = nullptr, list = nullptr;
        std::string caption{};
        std::uint32_t rows = 0;

        bool operator==(const Outline&) const = default;
    };
    using Text = std::optional<std::string_view>; // nothing where it can't be another

    Outline find(const Deadline& deadline) const;
    bool ask(Outline& outline, Text& text, const Deadline& deadline);
    bool read(HWND window, std::size_t claimed, Text& text, const Deadline& deadline);
    std::string_view nothingToRead();
    bool take(std::string_view text); // whether it is another

    SentMessages& messages_;
    std::optional<TextWatch> watch_;
    std::optional<Outline> outline_; // as it was told last
    WatchedText told_;
    HWND read_ = nullptr;     // whose text was read last
    std::size_t claimed_ = 0; // how long it was said to be then
    ULONGLONG readAgainAt_ = 0;
};

} // namespace larkspin::bridge
