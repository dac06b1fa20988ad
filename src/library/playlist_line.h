// What a line of a playlist's file stands for, even if another player or the owner's own hand has
// written the file.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

// The row for a line. Usually that is the line itself. A line that is a path alone gives the row of
// that song: a drive path, or one in the system's own notation, which `readPath` translates; in an
// M3U file (by the ending of `file`) also one from the file's directory on. Empty for a comment.
std::string rowOfPlaylistLine(std::string_view line, std::string_view file,
                              const std::function<std::string(std::string_view)>& readPath);

} // namespace larkspin
