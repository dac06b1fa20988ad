#include "platform/bridge/windows/text_lookout.h"

#include "platform/bridge/windows/window_search.h"

#include <utility>

namespace larkspin::bridge {

namespace {

constexpr unsigned longestLook = 200; // milliseconds

// A text is had from its beginning only. Of a longer one the length is told, and no end: nothing of
// it is heard until its head is dropped or it is begun anew.
constexpr std::size_t longestWatched = 4'000'000;
constexpr std::uint32_t mostTold = 1'000'000; // of it, so that it fits in a frame
constexpr std::size_t growth = 4096;          // between the question for its length and that for it

// A text may have become another of the same length, which only its reading tells: it is read
// again so often, but one that takes long to read no more than this share of the time.
constexpr ULONGLONG readEvery = 350, readShare = 20;

} // namespace

void TextLookout::watch(const TextWatch& watch) {
    watch_ = watch;
    watch_->most = std::min(watch.most, mostTold);
    outline_.reset();
    told_ = {};
    read_ = nullptr;
}

TextLookout::Outline TextLookout::find(const Deadline& deadline) const {
    Outline outline;
    visit(watch_->windows, deadline, [&](FoundWindow& found) {
        if (!found.holdsFirst(watch_->needed))
            return true;
        outline = {WatchedText::State::there, windowOf(found.window),
                   windowOf(found.holds[watch_->text]), windowOf(found.holds[watch_->list]),
                   captionOf(windowOf(found.window))};
        return false;
    });
    return outline;
}

bool TextLookout::read(HWND window, std::size_t claimed, Text& text, const Deadline& deadline) {
    const ULONGLONG now = GetTickCount64();
    if (window == read_ && claimed == claimed_ && now < readAgainAt_)
        return true;
    text = claimed > longestWatched ? std::string_view()
                                    : messages_.text(window, claimed + growth, deadline);
    if (!text)
        return false;
    read_ = window;
    claimed_ = claimed;
    readAgainAt_ = now + std::max(readEvery, (GetTickCount64() - now) * readShare);
    return true;
}

std::string_view TextLookout::nothingToRead() {
    claimed_ = 0;
    read_ = nullptr;
    return {};
}

// False when the window doesn't answer. What it doesn't have is empty.
bool TextLookout::ask(Outline& outline, Text& text, const Deadline& deadline) {
    if (outline.list != nullptr) {
        const auto rows = messages_.send(outline.list, LB_GETCOUNT, 0, 0, deadline);
        if (!rows)
            return false;
        outline.rows = static_cast<std::uint32_t>(std::max<LRESULT>(*rows, 0));
    }
    if (outline.text == nullptr) {
        text = nothingToRead();
        return true;
    }
    const auto length = messages_.textLength(outline.text, deadline);
    return length && read(outline.text, *length, text, deadline);
}

bool TextLookout::take(std::string_view text) {
    const bool isTooLong = claimed_ > longestWatched;
    const auto length = static_cast<std::uint32_t>(isTooLong ? claimed_ : text.size());
    const std::string_view end =
        text.substr(text.size() - std::min<std::size_t>(text.size(), watch_->most));
    const bool isOther = length != told_.length || end != told_.end;
    if (isOther)
        told_.end = end;
    told_.length = length;
    return isOther;
}

const WatchedText* TextLookout::look() {
    if (!watch_)
        return nullptr;
    const Deadline deadline(longestLook);
    Outline now = find(deadline);
    Text text;
    const bool isWhole = now.state == WatchedText::State::there && ask(now, text, deadline);
    // Without time for a look nothing is known; of one that hangs the next look knows at once.
    if (!isWhole && deadline.isOver())
        return nullptr;
    if (now.state == WatchedText::State::there && !isWhole)
        // One that went just now doesn't hang.
        now = IsWindow(now.window) != 0
                  ? Outline{WatchedText::State::hangs, now.window, now.text, now.list, now.caption}
                  : Outline{};
    if (now.state != WatchedText::State::there)
        text = nothingToRead();
    const bool isOtherText = text && take(*text);
    if (outline_ == now && !isOtherText)
        return nullptr;
    told_.state = now.state;
    told_.window = handleOf(now.window);
    told_.list = handleOf(now.list);
    told_.caption = now.caption;
    told_.rows = now.rows;
    outline_ = std::move(now);
    return &told_;
}

} // namespace larkspin::bridge
