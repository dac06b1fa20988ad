#include "platform/posix/disk_wire.h"

#include <cstring>

namespace larkspin {

void WireWriter::number(std::uint64_t value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void WireWriter::text(std::string_view text) {
    number(text.size());
    bytes.append(text);
}

std::uint64_t WireReader::number() {
    std::uint64_t value = 0;
    if (bytes_.size() < sizeof value) {
        // Once bytes are lacking, nothing of the rest can be made out.
        isWhole_ = false;
        bytes_ = {};
        return 0;
    }
    std::memcpy(&value, bytes_.data(), sizeof value);
    bytes_.remove_prefix(sizeof value);
    return value;
}

std::string WireReader::text() {
    const std::uint64_t size = number();
    if (size > bytes_.size()) {
        isWhole_ = false;
        bytes_ = {};
        return {};
    }
    std::string text(bytes_.substr(0, size));
    bytes_.remove_prefix(size);
    return text;
}

} // namespace larkspin
