#include "host/window_room/running_text.h"

#include "host/window_tree/host_bytes.h"
#include "text/characters.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::string_view afterName = ":\t";

// A text that has lost its head still begins with what was its end before, and with more of it than
// another text would have in common by chance.
constexpr std::size_t leastOverlap = 256;
constexpr std::size_t lookedFor = 64;

std::string withoutControls(std::string_view bytes) {
    const std::string text = fromSingleByte(bytes);
    std::string plain;
    for (std::string_view rest = text; !rest.empty();) {
        const Character character = firstCharacter(rest);
        plain += isControl(character.code) ? " " : rest.substr(0, character.length);
        rest.remove_prefix(character.length);
    }
    return plain;
}

RunningLine lineOf(std::string_view bytes) {
    const auto at = bytes.find(afterName);
    if (at == bytes.npos || at == 0)
        return {.text = withoutControls(bytes)};
    return {.speaker = withoutControls(bytes.substr(0, at)),
            .text = withoutControls(bytes.substr(at + afterName.size()))};
}

// How long the longest end of `text` is with which `after` begins. Where the last bytes of `text`
// stand in `after`, it ends, if all that is before them fits as well; only in texts that repeat
// themselves it may not.
std::size_t longestShared(std::string_view text, std::string_view after) {
    text.remove_prefix(text.size() - std::min(text.size(), after.size()));
    const std::string_view last = text.substr(text.size() - std::min(text.size(), lookedFor));
    if (const auto at = after.rfind(last); at != after.npos) {
        const std::string_view whole = after.substr(0, at + last.size());
        if (text.ends_with(whole))
            return whole.size();
    }
    std::vector<std::size_t> shared(after.size()); // of each beginning of `after`, with itself
    for (std::size_t at = 1, length = 0; at < after.size(); ++at) {
        while (length > 0 && after[at] != after[length])
            length = shared[length - 1];
        length += after[at] == after[length];
        shared[at] = length;
    }
    std::size_t length = 0;
    for (const char byte : text) {
        while (length > 0 && (length == after.size() || byte != after[length]))
            length = shared[length - 1];
        length += byte == after[length];
    }
    return length;
}

bool isKnown(std::size_t overlap, std::string_view before, std::string_view end) {
    return overlap == before.size() || overlap == end.size() || overlap >= leastOverlap;
}

} // namespace

RunningText::News RunningText::take(std::string_view end, std::size_t length) {
    if (end.empty())
        return takeNothing(length == 0);
    if (!end_)
        return takeFirst(end, length <= end.size());
    // Some clients empty the text and fill it again, as with letters of another size.
    if (!emptied_.empty() && emptied_.starts_with(end)) {
        end_ = end;
        return {.lines = {}, .isNew = true};
    }
    const std::string before = emptied_.empty() ? *end_ : std::exchange(emptied_, {});
    const std::size_t shared = longestShared(before, end);
    const std::size_t overlap = isKnown(shared, before, end) ? shared : 0;
    const bool wasEmpty = std::exchange(end_, end)->empty() && shared == 0;
    const bool isAtLineStart =
        overlap > 0 ? !lineEnd_.empty() && before.ends_with(lineEnd_) : length <= end.size();
    return {linesIn(end.substr(overlap), isAtLineStart), overlap > 0 || wasEmpty};
}

// One that is too long to be read isn't known any more.
RunningText::News RunningText::takeNothing(bool isEmpty) {
    if (!isEmpty)
        forget();
    else if (std::string before = std::exchange(end_, "").value_or(""); emptied_.empty())
        emptied_ = std::move(before); // else it is emptied while it is filled again
    return {};
}

RunningText::News RunningText::takeFirst(std::string_view end, bool isWhole) {
    end_ = end;
    return {linesIn(end, isWhole), false};
}

std::vector<RunningLine> RunningText::linesIn(std::string_view bytes, bool isAtLineStart) {
    if (const auto first = bytes.find('\r'); lineEnd_.empty() && first != bytes.npos)
        lineEnd_ = bytes.substr(first, 2) == "\r\n" ? "\r\n" : "\r";
    std::vector<RunningLine> lines;
    while (!bytes.empty()) {
        const auto at = lineEnd_.empty() ? bytes.npos : bytes.find(lineEnd_);
        const std::string_view line = bytes.substr(0, at);
        if (isAtLineStart && !line.empty())
            lines.push_back(lineOf(line));
        bytes.remove_prefix(at == bytes.npos ? bytes.size() : at + lineEnd_.size());
        isAtLineStart = true;
    }
    return lines;
}

} // namespace larkspin
