#include "text_fields.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace larkspin::client {

namespace {

constexpr char endOfLine[] = "\r\n";

// What every window does with its text, for one that keeps it itself: at any length.
Answer answerForText(const Message& message, std::string& text) {
    if (message.number == WM_GETTEXTLENGTH)
        return static_cast<LRESULT>(text.size());
    if (message.number == WM_GETTEXT && message.wParam > 0) {
        const std::size_t size = std::min<std::size_t>(text.size(), message.wParam - 1);
        auto* to = reinterpret_cast<char*>(message.lParam);
        std::memcpy(to, text.data(), size);
        to[size] = '\0';
        return static_cast<LRESULT>(size);
    }
    if (message.number == WM_SETTEXT) {
        text = reinterpret_cast<const char*>(message.lParam);
        InvalidateRect(message.window, nullptr, TRUE);
        return TRUE;
    }
    return std::nullopt;
}

std::vector<std::string> linesOf(const std::string& text) {
    constexpr std::size_t shown = 4096; // bytes of its end
    std::vector<std::string> lines;
    std::size_t at = text.size() > shown ? text.size() - shown : 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find(endOfLine, at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

void strike(char character, std::string& text, const Entered& entered) {
    if (character == '\r')
        entered(std::exchange(text, {}));
    else if (character == '\b' && !text.empty())
        text.pop_back();
    else if (static_cast<unsigned char>(character) >= ' ')
        text += character;
}

} // namespace

void RunningText::show(HWND parent, const Place& place) {
    text_.clear();
    window_ = childWindow(parent, "RICHCNTLREADONLY", "", place,
                          [this](const Message& message) { return answer(message); });
}

Answer RunningText::answer(const Message& message) {
    if (message.number == WM_PAINT) {
        paintField(message.window, linesOf(text_));
        return 0;
    }
    if (message.number == WM_NCDESTROY)
        window_ = nullptr;
    return answerForText(message, text_);
}

void RunningText::changed() {
    if (text_.size() > limit_)
        text_.erase(0, text_.size() - limit_);
    if (window_ != nullptr)
        InvalidateRect(window_, nullptr, TRUE);
}

void RunningText::say(const std::string& name, const std::string& text) {
    std::string line = text;
    std::ranges::replace(line, '\r', ' ');
    std::ranges::replace(line, '\n', ' ');
    text_ += name + ":\t" + line + endOfLine;
    changed();
}

void RunningText::fill(std::size_t size) {
    const std::string head = "Filler:\t";
    const std::size_t least = head.size() + std::strlen(endOfLine);
    while (text_.size() < size) {
        const std::size_t left = size - text_.size();
        const std::size_t line = left > 200 ? 100 : std::max(left, least);
        text_ += head + std::string(line - least, '.') + endOfLine;
    }
    changed();
}

void RunningText::clear() {
    text_.clear();
    changed();
}

void inputLine(HWND parent, const char* className, const Place& place, Entered entered) {
    childWindow(parent, className, "", place,
                [entered, text = std::string()](const Message& message) mutable -> Answer {
                    switch (message.number) {
                    case WM_PAINT:
                        paintField(message.window, {text});
                        return 0;
                    case WM_LBUTTONDOWN:
                        SetFocus(message.window);
                        return 0;
                    case WM_CHAR:
                        strike(static_cast<char>(message.wParam), text, entered);
                        InvalidateRect(message.window, nullptr, TRUE);
                        return 0;
                    default:
                        return answerForText(message, text);
                    }
                });
}

} // namespace larkspin::client
