#include "platform/terminal/screen/stroke_reader.h"

#include "platform/terminal/screen/typed_stroke.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto patienceWithKey = 50ms; // that may be one by itself
constexpr auto patienceWithRest = 1s;  // of what is none without it, on a slow line
constexpr auto patienceWithPaste = 5s; // of a terminal that doesn't tell its end
constexpr auto betweenPresses = 400ms; // of a double click

// Terminals paste a line break as what its key sends.
std::string withLineBreaks(const std::string& pasted) {
    std::string text;
    text.reserve(pasted.size());
    for (std::size_t at = 0; at < pasted.size(); ++at)
        if (pasted[at] != '\r')
            text += pasted[at];
        else if (at + 1 == pasted.size() || pasted[at + 1] != '\n')
            text += '\n';
    return text;
}

} // namespace

std::vector<Stroke> StrokeReader::take(std::string_view bytes, Nanoseconds now) {
    std::vector<Stroke> strokes;
    const std::string whole = std::exchange(bytes_, {}) + std::string(bytes);
    std::string_view left = whole;
    while (!left.empty()) {
        if (paste_) {
            takePasted(left, strokes);
            continue;
        }
        if (left.starts_with(pasteBegins)) {
            left.remove_prefix(pasteBegins.size());
            paste_.emplace();
            continue;
        }
        auto [length, stroke] = firstStroke(left, false);
        if (length == 0)
            break;
        left.remove_prefix(length);
        if (!stroke)
            continue;
        if (auto* const mouse = std::get_if<MouseStroke>(&*stroke))
            tellSecondPress(*mouse, now);
        strokes.push_back(std::move(*stroke));
    }
    bytes_ = std::string(left);
    return strokes;
}

// Up to the paste's end, if that has come. What may be the beginning of the end is kept.
void StrokeReader::takePasted(std::string_view& bytes, std::vector<Stroke>& strokes) {
    const std::string text = std::exchange(pasteEnd_, {}) + std::string(bytes);
    const std::size_t end = text.find(pasteEnds);
    std::size_t taken = std::min(end, text.size());
    if (end == text.npos)
        for (std::size_t kept = std::min(pasteEnds.size() - 1, text.size()); kept > 0; --kept)
            if (text.ends_with(pasteEnds.substr(0, kept))) {
                taken -= kept;
                pasteEnd_ = text.substr(taken);
                break;
            }
    paste_->append(text, 0, std::min(taken, longestPaste - paste_->size()));
    if (end == text.npos) {
        bytes = {};
        return;
    }
    bytes.remove_prefix(bytes.size() - (text.size() - end - pasteEnds.size()));
    strokes.push_back(endPaste());
}

Stroke StrokeReader::endPaste() {
    const std::string pasted = std::move(*paste_);
    paste_.reset();
    pasteEnd_.clear();
    return PasteStroke{withLineBreaks(pasted)};
}

void StrokeReader::tellSecondPress(MouseStroke& mouse, Nanoseconds now) {
    if (mouse.kind != MouseStroke::Kind::press)
        return;
    const bool isThere = lastPress_ && lastPress_->button == mouse.button &&
                         lastPress_->row == mouse.row && lastPress_->column == mouse.column;
    mouse.isSecond = isThere && !lastPress_->isSecond && now - pressedAt_ <= betweenPresses;
    lastPress_ = mouse;
    pressedAt_ = now;
}

std::optional<Nanoseconds> StrokeReader::patience() const {
    if (paste_)
        return patienceWithPaste;
    if (bytes_.empty())
        return std::nullopt;
    const bool mayBeWhole = bytes_[0] == '\x1b' && firstStroke(bytes_, true).stroke;
    return mayBeWhole ? patienceWithKey : patienceWithRest;
}

std::vector<Stroke> StrokeReader::giveUp() {
    std::vector<Stroke> strokes;
    if (paste_) {
        *paste_ += pasteEnd_;
        strokes.push_back(endPaste());
    }
    const std::string whole = std::exchange(bytes_, {});
    for (std::string_view left = whole; !left.empty();) {
        auto [length, stroke] = firstStroke(left, true);
        left.remove_prefix(length);
        if (stroke)
            strokes.push_back(std::move(*stroke));
    }
    return strokes;
}

} // namespace larkspin
