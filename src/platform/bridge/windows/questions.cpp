#include "platform/bridge/windows/questions.h"

#include "platform/bridge/windows/keystrokes.h"
#include "platform/bridge/windows/registry_value.h"
#include "platform/bridge/windows/row_fields.h"
#include "platform/bridge/windows/window_search.h"

namespace larkspin::bridge {

namespace {

constexpr std::size_t mostTexts = 3'000'000; // bytes in a walk, so that its answer fits in a frame

HWND windowIn(Reader& reader) {
    return windowOf(reader.handle());
}

std::uint32_t number(LRESULT answer) { // may be below zero
    return static_cast<std::uint32_t>(answer);
}

struct Message {
    explicit Message(Reader& reader)
        : to(windowIn(reader)), message(reader.number()), wParam(reader.number()),
          lParam(static_cast<LPARAM>(reader.number())) {}

    HWND to;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

} // namespace

std::optional<std::string> Questions::answer(const Frame& question) {
    reader_ = Reader(question.body);
    reply(question.kind, Deadline(workMilliseconds));
    std::string body = writer_.take();
    writer_ = {};
    return reader_.isGood() ? std::optional(std::move(body)) : std::nullopt;
}

void Questions::reply(Kind kind, const Deadline& deadline) {
    switch (kind) {
    case Kind::walk:
        return walk(deadline);
    case Kind::find:
        return find(deadline);
    case Kind::caption:
        return caption();
    case Kind::text:
        return text(deadline);
    case Kind::send:
        return send(deadline);
    case Kind::sendText:
        return sendText(deadline);
    case Kind::post:
        return post();
    case Kind::show:
        return show();
    case Kind::visible:
        return visible();
    case Kind::rows:
        return rows(deadline);
    case Kind::watch:
        return watch();
    case Kind::registry:
        return registry();
    case Kind::activate:
        return activate(deadline);
    case Kind::keys:
        return keys();
    case Kind::greeting: // aren't questions
    case Kind::seen:
        reader_ = Reader("?"); // can't be read
    }
}

std::string Questions::textOf(HWND window, const Deadline& deadline) {
    const auto claimed = messages_.textLength(window, deadline).value_or(0);
    if (claimed == 0)
        return {};
    const std::size_t size = std::min(claimed, WindowCalls::longestText);
    return std::string(messages_.text(window, size, deadline).value_or(std::string_view()));
}

void Questions::walk(const Deadline& deadline) {
    const WindowWalk walk = reader_.walk();
    if (!reader_.isGood())
        return;
    FoundWindows all;
    std::size_t texts = 0;
    visit(walk, deadline, [&](FoundWindow& found) {
        const HWND window = windowOf(found.window);
        if (walk.tells == WindowWalk::Tells::caption)
            found.text = captionOf(window);
        else if (walk.tells == WindowWalk::Tells::text)
            found.text = textOf(window, deadline);
        texts += found.text.size();
        all.push_back(std::move(found));
        return texts < mostTexts;
    });
    writer_.add(all);
}

void Questions::find(const Deadline& deadline) {
    const std::string className = reader_.text(), caption = reader_.text();
    const bool isAsked = reader_.isGood() && !className.empty();
    writer_.addHandle(isAsked ? handleOf(topLevelWindow(className.c_str(), caption, deadline))
                              : noHandle);
}

void Questions::caption() {
    writer_.add(captionOf(windowIn(reader_)));
}

void Questions::text(const Deadline& deadline) {
    writer_.add(textOf(windowIn(reader_), deadline));
}

void Questions::send(const Deadline& deadline) {
    const Message sent(reader_);
    if (reader_.isGood())
        writer_.add(number(
            messages_.send(sent.to, sent.message, sent.wParam, sent.lParam, deadline).value_or(0)));
}

void Questions::sendText(const Deadline& deadline) {
    const HWND to = windowIn(reader_);
    const UINT message = reader_.number();
    const std::string text = reader_.text();
    if (reader_.isGood())
        messages_.send(to, message, 0, reinterpret_cast<LPARAM>(text.c_str()), deadline);
}

void Questions::post() {
    const Message posted(reader_);
    // What is no window would be this program itself, or all others.
    const bool isDone = reader_.isGood() && IsWindow(posted.to) != 0 &&
                        PostMessageA(posted.to, posted.message, posted.wParam, posted.lParam) != 0;
    writer_.add(isDone ? 1U : 0U);
}

void Questions::show() {
    const HWND window = windowIn(reader_);
    const auto command = static_cast<int>(reader_.number());
    if (reader_.isGood())
        ShowWindowAsync(window, command);
}

void Questions::visible() {
    writer_.add(IsWindowVisible(windowIn(reader_)) != 0 ? 1U : 0U);
}

void Questions::rows(const Deadline& deadline) {
    const HWND list = windowIn(reader_);
    const RowRecord record = reader_.record();
    const std::size_t most = reader_.number();
    if (reader_.isGood())
        writer_.add(rowFields(messages_, list, record, most, deadline));
}

void Questions::watch() {
    if (reader_.isAtEnd())
        return lookout_.watchNothing();
    const TextWatch watch = reader_.watch();
    if (reader_.isGood())
        lookout_.watch(watch);
}

void Questions::registry() {
    const std::string key = reader_.text(), name = reader_.text();
    if (!reader_.isGood())
        return;
    if (const auto value = registryValue(key, name))
        writer_.add(*value);
}

void Questions::activate(const Deadline& deadline) {
    const std::string caption = reader_.text();
    if (reader_.isGood())
        activation_.activate(caption, deadline);
}

void Questions::keys() {
    const std::string keys = reader_.text();
    if (reader_.isGood())
        strike(keys);
}

} // namespace larkspin::bridge
