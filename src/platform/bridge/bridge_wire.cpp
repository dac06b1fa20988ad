#include "platform/bridge/bridge_wire.h"

#include <utility>

namespace larkspin::bridge {

namespace {

constexpr std::size_t numberSize = 4, headSize = 1 + numberSize; // of a frame: kind and number

void append(std::string& bytes, std::uint32_t number) {
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift);
}

std::uint32_t numberIn(std::string_view bytes) {
    std::uint32_t number = 0;
    for (std::size_t at = numberSize; at-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at]);
    return number;
}

std::uint32_t sizeOf(std::size_t size) {
    return static_cast<std::uint32_t>(size);
}

} // namespace

std::string encoded(const Frame& frame) {
    std::string bytes;
    append(bytes, sizeOf(headSize + frame.body.size()));
    bytes += static_cast<char>(frame.kind);
    append(bytes, frame.number);
    return bytes + frame.body;
}

std::optional<Frame> FrameReader::next() {
    const std::string_view rest = std::string_view(bytes_).substr(taken_);
    if (broken_ || rest.size() < numberSize)
        return std::nullopt;
    const std::size_t size = numberIn(rest);
    broken_ = size < headSize || size > mostFrame;
    if (broken_ || rest.size() < numberSize + size)
        return std::nullopt;
    const std::string_view bytes = rest.substr(numberSize, size);
    const auto kind = static_cast<unsigned char>(bytes.front());
    broken_ = kind > static_cast<unsigned char>(lastKind);
    if (broken_)
        return std::nullopt;
    Frame frame{static_cast<Kind>(kind), numberIn(bytes.substr(1)),
                std::string(bytes.substr(headSize))};
    taken_ += numberSize + size;
    if (taken_ == bytes_.size() || taken_ > mostFrame) {
        bytes_.erase(0, taken_);
        taken_ = 0;
    }
    return frame;
}

Writer& Writer::add(std::uint32_t number) {
    append(body_, number);
    return *this;
}

Writer& Writer::add(std::string_view text) {
    add(sizeOf(text.size()));
    body_ += text;
    return *this;
}

Writer& Writer::add(const std::vector<std::string>& texts) {
    add(sizeOf(texts.size()));
    for (const std::string& text : texts)
        add(text);
    return *this;
}

Writer& Writer::addHandles(const std::vector<HostHandle>& handles) {
    add(sizeOf(handles.size()));
    for (const HostHandle handle : handles)
        addHandle(handle);
    return *this;
}

Writer& Writer::add(const WindowWalk& walk) {
    addHandle(walk.from).add(walk.path).add(walk.className).add(walk.holds);
    return add(static_cast<std::uint32_t>(walk.tells));
}

Writer& Writer::add(const FoundWindows& found) {
    add(sizeOf(found.size()));
    for (const FoundWindow& each : found)
        addHandle(each.window).add(each.text).addHandles(each.holds);
    return *this;
}

Writer& Writer::add(const RowRecord& record) {
    return add(record.pointerAt).add(record.nameAt).add(record.nameSize);
}

Writer& Writer::add(const TextWatch& watch) {
    return add(watch.windows).add(watch.needed).add(watch.text).add(watch.list).add(watch.most);
}

Writer& Writer::add(const WatchedText& text) {
    add(static_cast<std::uint32_t>(text.state)).addHandle(text.window).addHandle(text.list);
    return add(text.caption).add(text.length).add(text.end).add(text.rows);
}

Writer& Writer::add(const RegistryValue& value) {
    return add(std::uint32_t{value.type}).add(value.bytes);
}

std::uint32_t Reader::number() {
    good_ = good_ && rest_.size() >= numberSize;
    if (!good_)
        return 0;
    const std::uint32_t value = numberIn(rest_);
    rest_.remove_prefix(numberSize);
    return value;
}

std::string Reader::text() {
    const std::size_t size = number();
    good_ = good_ && size <= rest_.size();
    if (!good_)
        return {};
    std::string text(rest_.substr(0, size));
    rest_.remove_prefix(size);
    return text;
}

// No more than what is left can hold, so that a claim costs no memory.
std::uint32_t Reader::count(std::size_t eachAtLeast) {
    const std::uint32_t claimed = number();
    good_ = good_ && claimed <= rest_.size() / eachAtLeast;
    return good_ ? claimed : 0;
}

std::vector<std::string> Reader::texts() {
    std::vector<std::string> all(count(numberSize));
    for (std::string& each : all)
        each = text();
    return all;
}

std::vector<HostHandle> Reader::handles() {
    std::vector<HostHandle> all(count(numberSize));
    for (HostHandle& each : all)
        each = handle();
    return all;
}

WindowWalk Reader::walk() {
    WindowWalk walk;
    walk.from = handle();
    walk.path = texts();
    walk.className = text();
    walk.holds = texts();
    const std::uint32_t tells = number();
    good_ = good_ && tells <= static_cast<std::uint32_t>(WindowWalk::Tells::text);
    walk.tells = good_ ? static_cast<WindowWalk::Tells>(tells) : WindowWalk::Tells::nothing;
    return walk;
}

FoundWindows Reader::found() {
    FoundWindows all(count(3 * numberSize));
    for (FoundWindow& each : all) {
        each.window = handle();
        each.text = text();
        each.holds = handles();
    }
    return all;
}

RowRecord Reader::record() {
    RowRecord record;
    record.pointerAt = number();
    record.nameAt = number();
    record.nameSize = number();
    return record;
}

TextWatch Reader::watch() {
    TextWatch watch;
    watch.windows = walk();
    watch.needed = number();
    watch.text = number();
    watch.list = number();
    watch.most = number();
    const std::size_t held = watch.windows.holds.size();
    good_ = good_ && watch.needed <= held && watch.text < held && watch.list < held;
    return watch;
}

WatchedText Reader::watched() {
    WatchedText watched;
    const std::uint32_t state = number();
    good_ = good_ && state <= static_cast<std::uint32_t>(WatchedText::State::hangs);
    watched.state = good_ ? static_cast<WatchedText::State>(state) : WatchedText::State::none;
    watched.window = handle();
    watched.list = handle();
    watched.caption = text();
    watched.length = number();
    watched.end = text();
    watched.rows = number();
    return watched;
}

RegistryValue Reader::registryValue() {
    RegistryValue value;
    value.type = number();
    value.bytes = text();
    return value;
}

} // namespace larkspin::bridge
