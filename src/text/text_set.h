// A set of texts that are kept elsewhere and must not move or change while they are in it. Made for
// tens of thousands of them: one place in memory is looked at for most questions, where a set of
// nodes looks at three.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace larkspin {

class TextSet {
public:
    void insert(std::string_view text); // nothing if it is there
    bool contains(std::string_view text) const;

    // The same of each of many texts. What the next ones need of memory is on its way while one is
    // looked up.
    std::vector<bool> containsEach(const std::vector<std::string_view>& texts) const;

private:
    struct Entry {
        const char* start = nullptr; // null: a free place
        std::uint32_t size = 0;
        std::uint32_t mark = 0; // the text's hash

        std::string_view text() const { return {start, size}; }
    };

    static std::uint32_t markOf(std::string_view text);
    std::size_t placeOf(std::string_view text, std::uint32_t mark) const;
    void grow();

    std::vector<Entry> entries_; // a power of two, at most half of them taken; or none
    std::size_t count_ = 0;
};

} // namespace larkspin
