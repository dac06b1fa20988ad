// Row: the text of one list row together with its folded form. Copies share the text, which never
// changes.
//
// A row knows where its first bar stands: the rows of songs are taken apart there, and a walk over
// a whole playlist shouldn't have to look for it.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace larkspin {

class Row {
public:
    Row() = default; // an empty row
    explicit Row(std::string_view text);

    std::string_view text() const {
        const Sizes size = sizes();
        return part(size.folded, size.text);
    }
    std::string_view folded() const {
        const Sizes size = sizes();
        return part(0, size.folded != 0 ? size.folded : size.text);
    }
    // Where the first "|" of the folded form stands; after its end when there is none.
    std::size_t bar() const { return sizes().bar; }

private:
    friend class RowWriter;

    struct Sizes {
        std::uint32_t text = 0;
        std::uint32_t folded = 0; // 0 where folding changes nothing: the text is there once
        std::uint32_t bar = 0;
    };

    Sizes sizes() const {
        Sizes read;
        if (bytes_)
            std::memcpy(&read, bytes_.get(), sizeof read);
        return read;
    }
    std::string_view part(std::size_t start, std::size_t size) const {
        return bytes_ ? std::string_view(bytes_.get() + sizeof(Sizes) + start, size)
                      : std::string_view();
    }

    std::shared_ptr<const char> bytes_; // the sizes, the folded form, the text
};

// Makes rows whose texts lie side by side in memory, so that a walk over them in the order in
// which they were made is quick. They share pages; a page is held until its last row is gone.
class RowWriter {
public:
    // Some twenty-five songs go on a page: enough to lie side by side, and little to be held for
    // a row that outlives the others.
    explicit RowWriter(std::size_t pageSize = 8192) : pageSize_(pageSize) {}
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    Row write(std::string_view text);

private:
    std::size_t pageSize_; // bytes; a larger row has a page to itself
    std::shared_ptr<char[]> page_;
    std::size_t used_ = 0, left_ = 0; // bytes of the page
};

} // namespace larkspin
