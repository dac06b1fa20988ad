#include "text/row.h"

#include "text/fold.h"

#include <algorithm>
#include <new>
#include <string>

namespace larkspin {

Row::Row(std::string_view text) : Row(RowWriter(0).write(text)) {}

Row RowWriter::write(std::string_view text) {
    std::string folded = foldCase(text);
    Row::Head head;
    head.bar = static_cast<std::uint32_t>(std::min(folded.find('|'), folded.size()));
    if (folded == text)
        folded.clear();
    head.text = static_cast<std::uint32_t>(text.size());
    head.folded = static_cast<std::uint32_t>(folded.size());

    const std::size_t needed = sizeof head + folded.size() + text.size();
    // What is left of the old page stays unused. The page lives on in the rows that share it.
    if (left_ < needed) {
        leavePage();
        left_ = std::max(pageSize_, needed);
        used_ = sizeof(Row::Holders);
        page_ = new char[used_ + left_];
        new (page_) Row::Holders(1);
    }
    head.inPage = static_cast<std::uint32_t>(used_);
    char* const start = page_ + used_;
    std::memcpy(start, &head, sizeof head);
    std::copy(text.begin(), text.end(),
              std::copy(folded.begin(), folded.end(), start + sizeof head));
    used_ += needed;
    left_ -= needed;

    Row row;
    row.bytes_ = start;
    row.hold();
    return row;
}

} // namespace larkspin
