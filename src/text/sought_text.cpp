#include "text/sought_text.h"

#include "text/fold.h"

namespace larkspin {

SoughtText::SoughtText(std::string_view typed)
    : plain_(foldCase(typed)), ofName_(foldName(typed)) {}

bool SoughtText::isIn(std::string_view folded) const {
    // Without a separator in the typed text both forms are the same, and the row is searched as it
    // is.
    if (plain_ == ofName_)
        return folded.find(plain_) != std::string_view::npos;
    return foldName(folded).find(ofName_) != std::string::npos;
}

} // namespace larkspin
