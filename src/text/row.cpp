#include "text/row.h"

#include "text/fold.h"

#include <algorithm>
#include <string>

namespace larkspin {

Row::Row(std::string_view text) : Row(RowWriter(0).write(text)) {}

Row RowWriter::write(std::string_view text) {
    std::string folded = foldCase(text);
    Row::Sizes sizes;
    sizes.bar = static_cast<std::uint32_t>(std::min(folded.find('|'), folded.size()));
    if (folded == text)
        folded.clear();
    sizes.text = static_cast<std::uint32_t>(text.size());
    sizes.folded = static_cast<std::uint32_t>(folded.size());

    const std::size_t needed = sizeof sizes + folded.size() + text.size();
    // What is left of the old page stays unused. The page lives on in the rows that share it.
    if (left_ < needed) {
        left_ = std::max(pageSize_, needed);
        used_ = 0;
        page_ = std::make_shared_for_overwrite<char[]>(left_);
    }
    char* const start = page_.get() + used_;
    std::memcpy(start, &sizes, sizeof sizes);
    std::copy(text.begin(), text.end(),
              std::copy(folded.begin(), folded.end(), start + sizeof sizes));
    used_ += needed;
    left_ -= needed;

    Row row;
    row.bytes_ = std::shared_ptr<const char>(page_, start);
    return row;
}

} // namespace larkspin
