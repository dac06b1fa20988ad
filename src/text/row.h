// Row: the text of one list row together with its folded form. Copies share the text, which never
// changes. All of them belong to one thread.
//
// A row knows where its first bar stands: the rows of songs are taken apart there, and a walk over
// a whole playlist shouldn't have to look for it.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace larkspin {

class Row {
public:
    Row() = default; // an empty row
    explicit Row(std::string_view text);
    Row(const Row& other) : bytes_(other.bytes_) { hold(); }
    Row(Row&& other) noexcept : bytes_(std::exchange(other.bytes_, nullptr)) {}
    Row& operator=(Row other) noexcept {
        std::swap(bytes_, other.bytes_);
        return *this;
    }
    ~Row() { release(); }

    std::string_view text() const {
        const Head read = head();
        return part(read.folded, read.text);
    }
    std::string_view folded() const {
        const Head read = head();
        return part(0, read.folded != 0 ? read.folded : read.text);
    }
    // Where the first "|" of the folded form stands; after its end when there is none.
    std::size_t bar() const { return head().bar; }

private:
    friend class RowWriter;

    // A page begins with the number of those who hold it: its rows and whoever writes to it. Lists
    // hold tens of thousands of rows, so a row is no more than a pointer, and finds its page by
    // itself.
    using Holders = std::uint32_t;

    struct Head {
        std::uint32_t inPage = 0; // bytes between the start of the page and the row
        std::uint32_t text = 0;
        std::uint32_t folded = 0; // 0 where folding changes nothing: the text is there once
        std::uint32_t bar = 0;
    };

    Head head() const {
        Head read;
        if (bytes_)
            std::memcpy(&read, bytes_, sizeof read);
        return read;
    }
    std::string_view part(std::size_t start, std::size_t size) const {
        return bytes_ ? std::string_view(bytes_ + sizeof(Head) + start, size) : std::string_view();
    }
    static Holders& holdersOf(char* page) { return *reinterpret_cast<Holders*>(page); }
    char* page() const { return bytes_ - head().inPage; }
    void hold() const {
        if (bytes_)
            ++holdersOf(page());
    }
    void release() const {
        if (bytes_)
            leave(page());
    }
    static void leave(char* page) {
        if (--holdersOf(page) == 0)
            delete[] page;
    }

    char* bytes_ = nullptr; // the head, the folded form, the text
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
    ~RowWriter() { leavePage(); }

    Row write(std::string_view text);

private:
    void leavePage() {
        if (page_)
            Row::leave(page_);
    }

    std::size_t pageSize_; // bytes; a larger row has a page to itself
    char* page_ = nullptr;
    std::size_t used_ = 0, left_ = 0; // bytes of the page
};

} // namespace larkspin
