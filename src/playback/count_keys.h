// The keys of the counter file: a song's file name, with percent escapes where an INI file would
// cut it or take it for something else. Every name has a key of its own.
//
// A name that needs no escapes is its own key, also with percent signs in it, so that files from
// before there were any are read as they are.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

std::string countKey(std::string_view title);
std::string titleOfCountKey(std::string_view key);

} // namespace larkspin
