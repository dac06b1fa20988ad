// The one pattern language: `*` is any run of characters, also an empty one, and everything
// else stands for itself. The whole text must fit. Case counts; callers fold.
#pragma once

#include <string_view>

namespace larkspin {

bool fits(std::string_view text, std::string_view pattern);

// Several patterns joined by semicolons: the text must fit one of them, without regard to case. The
// patterns are folded.
bool fitsAnyFolded(std::string_view text, std::string_view patterns);

} // namespace larkspin
