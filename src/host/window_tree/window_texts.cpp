#include "host/window_tree/window_texts.h"

#include "text/highlight.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/wildcard.h"

#include <optional>

namespace larkspin {

namespace {

constexpr std::string_view beforeMinutes = "About ";
constexpr std::string_view afterMinutes = " minutes remaining";

// The clock's notice tells the time of day first; the time online begins that many characters from
// the full stop. In a text without one they count as if it stood in front.
constexpr std::size_t fromFullStop = 16;

std::string_view withoutFirst(std::string_view text, std::size_t count) {
    return text.substr(prefixLength(text, count));
}

// What follows the mark and the character after it. A text without the mark loses its first
// character alone.
std::string_view after(std::string_view text, char mark) {
    const auto at = text.find(mark);
    return withoutFirst(at == text.npos ? text : text.substr(at + 1), 1);
}

bool fitsFrom(std::string_view text, char mark, std::string_view pattern) {
    const auto at = text.find(mark);
    return at != text.npos && fits(text.substr(at), pattern);
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != text.npos;
}

std::string_view betweenWords(std::string_view timeLeft) {
    return withoutLast(withoutFirst(timeLeft, beforeMinutes.size()), afterMinutes.size());
}

std::optional<std::string> minutes(std::string_view timeLeft) {
    const auto value = number(betweenWords(timeLeft));
    return value ? std::optional(numberText(*value)) : std::nullopt;
}

} // namespace

std::string transferredFile(std::string_view status) {
    return std::string(after(status, 'g'));
}

Notice noticeThatSays(std::string_view status) {
    return {.text = std::string(status),
            .isUpload = fitsFrom(status, 'w', "w Upload*"),
            .tellsOfTransfer = fitsFrom(status, 'i', "ing *"),
            .tellsOfEnd =
                contains(status, "File transfer complete.") || contains(status, "Upload aborted."),
            .asksForOwner = contains(status, "You have been idle for a while.") ||
                            contains(status, "Do you wish to continue to stay online?"),
            .upload = std::nullopt};
}

std::string uploadPercentage(std::string_view caption) {
    return std::string(withoutLast(highlight(after(caption, '-'), "File Transfer - ", ""), 1));
}

std::string downloadPercentage(std::string_view caption) {
    const auto percentage = after(caption, '-');
    return fits(percentage, "ile *") ? "calculating" : std::string(percentage);
}

std::string uploadMinutes(std::string_view timeLeft) {
    if (auto told = minutes(timeLeft))
        return *told;
    if (timeLeft.starts_with('C'))
        return "Calculating";
    return timeLeft.starts_with('L') ? "less than 1" : std::string(timeLeft);
}

std::string downloadMinutes(std::string_view timeLeft) {
    if (auto told = minutes(timeLeft))
        return *told;
    return betweenWords(timeLeft) == "a" ? "calculating" : "less than 1";
}

std::string timeOnlineIn(std::string_view notice) {
    const auto stop = notice.find('.');
    if (stop == notice.npos)
        return std::string(withoutFirst(notice, fromFullStop - 1));
    return std::string(withoutFirst(notice.substr(stop), fromFullStop));
}

} // namespace larkspin
