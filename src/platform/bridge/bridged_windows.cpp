#include "platform/bridge/bridged_windows.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using bridge::Kind;
using bridge::Reader;
using bridge::Writer;

// The client's numbers have four bytes.
template <typename Number> std::uint32_t narrowed(Number number) {
    return static_cast<std::uint32_t>(number);
}

Writer of(HostHandle window) {
    Writer writer;
    writer.addHandle(window);
    return writer;
}

Writer messageTo(HostHandle window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    Writer writer = of(window);
    writer.add(std::uint32_t{message}).add(narrowed(wParam)).add(narrowed(lParam));
    return writer;
}

bool isWithin(const FoundWindows& found, const WindowWalk& walk) {
    return found.size() <= WindowWalk::most &&
           std::ranges::all_of(found, [&](const FoundWindow& each) {
               return each.window != noHandle && each.holds.size() == walk.holds.size() &&
                      each.text.size() <= WindowCalls::longestText;
           });
}

bool isWithin(const WatchedText& text, const TextWatch& watch) {
    return text.end.size() <= watch.most && text.end.size() <= text.length &&
           text.caption.size() <= WindowCalls::longestText;
}

} // namespace

template <typename Read>
auto BridgedWindows::ask(Kind kind, Writer&& question, Read read)
    -> std::optional<decltype(read(std::declval<Reader&>()))> {
    const auto body = link_.ask(kind, question.take());
    if (!body)
        return std::nullopt;
    Reader reader(*body);
    auto answer = read(reader);
    if (reader.isGood())
        return answer;
    link_.giveUp(BridgeLink::unreadable);
    return std::nullopt;
}

void BridgedWindows::tell(Kind kind, Writer&& order) {
    ask(kind, std::move(order), [](Reader&) { return true; });
}

std::string BridgedWindows::askText(Kind kind, HostHandle window) {
    auto text = ask(kind, of(window), [](Reader& reader) { return reader.text(); });
    return text && text->size() <= longestText ? std::move(*text) : "";
}

std::uint32_t BridgedWindows::askNumber(Kind kind, Writer&& question) {
    return ask(kind, std::move(question), [](Reader& reader) { return reader.number(); })
        .value_or(0);
}

FoundWindows BridgedWindows::walk(const WindowWalk& walk) {
    Writer question;
    question.add(walk);
    auto found =
        ask(Kind::walk, std::move(question), [](Reader& reader) { return reader.found(); });
    return found && isWithin(*found, walk) ? std::move(*found) : FoundWindows{};
}

HostHandle BridgedWindows::findWindow(const std::string& className, const std::string& caption) {
    Writer question;
    question.add(className).add(caption);
    return askNumber(Kind::find, std::move(question));
}

std::string BridgedWindows::caption(HostHandle window) {
    return askText(Kind::caption, window);
}

std::string BridgedWindows::text(HostHandle window) {
    return askText(Kind::text, window);
}

std::int64_t BridgedWindows::send(HostHandle window, unsigned message, std::uint64_t wParam,
                                  std::int64_t lParam) {
    const auto answer = askNumber(Kind::send, messageTo(window, message, wParam, lParam));
    return static_cast<std::int32_t>(answer); // errors are below 0
}

void BridgedWindows::sendText(HostHandle window, unsigned message, const std::string& text) {
    Writer order = of(window);
    order.add(std::uint32_t{message}).add(text);
    tell(Kind::sendText, std::move(order));
}

bool BridgedWindows::post(HostHandle window, unsigned message, std::uint64_t wParam,
                          std::int64_t lParam) {
    return askNumber(Kind::post, messageTo(window, message, wParam, lParam)) == 1;
}

void BridgedWindows::show(HostHandle window, int command) {
    Writer order = of(window);
    order.add(narrowed(command));
    tell(Kind::show, std::move(order));
}

int BridgedWindows::visible(HostHandle window) {
    return static_cast<int>(askNumber(Kind::visible, of(window)));
}

std::vector<std::string> BridgedWindows::rows(HostHandle list, const RowRecord& record,
                                              std::size_t most) {
    const std::size_t countable = std::numeric_limits<std::uint32_t>::max();
    Writer question = of(list);
    question.add(record).add(narrowed(std::min(most, countable)));
    auto rows = ask(Kind::rows, std::move(question), [](Reader& reader) { return reader.texts(); });
    if (!rows || rows->size() > most)
        return {};
    for (std::string& field : *rows)
        if (!field.empty())
            field.resize(record.nameSize, '\0');
    return std::move(*rows);
}

void BridgedWindows::watch(const TextWatch& watch, Watching changed) {
    watch_ = watch;
    watching_ = std::move(changed);
    seesWindow_ = false;
    loop_.cancel(std::exchange(vanishing_, TimerId::none));
    askToWatch();
}

// A bridge that isn't there, or takes no question now, is asked when it does. One that answers late
// will watch as well.
void BridgedWindows::askToWatch() {
    Writer question;
    if (watching_)
        question.add(watch_);
    const bool wasHung = link_.isHung();
    const auto answer = ask(Kind::watch, std::move(question), [](Reader&) { return true; });
    isWatched_ = answer || (!wasHung && link_.isHung());
}

void BridgedWindows::bridgeIsUp() {
    isWatched_ = !watching_; // a new one watches nothing
    bridgeAnswersAgain();
}

void BridgedWindows::bridgeAnswersAgain() {
    if (!isWatched_)
        askToWatch();
}

void BridgedWindows::bridgeHasSeen(const std::string& body) {
    Reader reader(body);
    const WatchedText text = reader.watched();
    if (!reader.isGood())
        link_.giveUp(BridgeLink::unreadable);
    else if (isWatched_ && watching_ && isWithin(text, watch_))
        changed(text);
}

void BridgedWindows::bridgeIsGone() {
    isWatched_ = false;
    if (seesWindow_ && vanishing_ == TimerId::none)
        vanishing_ = loop_.once(0ns, [this] {
            vanishing_ = TimerId::none;
            changed({});
        });
}

// What is called may watch something else, so that nothing here is touched after it.
void BridgedWindows::changed(const WatchedText& text) {
    seesWindow_ = text.state != WatchedText::State::none;
    if (const Watching watching = watching_)
        watching(text);
}

std::optional<RegistryValue> BridgedWindows::registryValue(const std::string& key,
                                                           const std::string& name) {
    Writer question;
    question.add(key).add(name);
    auto value = ask(Kind::registry, std::move(question), [](Reader& reader) {
        return reader.isAtEnd() ? std::nullopt : std::optional(reader.registryValue());
    });
    const bool isThere = value && *value && (*value)->bytes.size() <= longestText;
    return isThere ? std::move(*value) : std::nullopt;
}

void BridgedWindows::activate(const std::string& caption) {
    Writer order;
    order.add(caption);
    tell(Kind::activate, std::move(order));
}

void BridgedWindows::sendKeys(const std::string& keys) {
    Writer order;
    order.add(keys);
    tell(Kind::keys, std::move(order));
}

} // namespace larkspin
