// What a line of a playlist's file stands for, also where the file comes from another player or
// from the owner's own hand.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

// The row for a line: the line itself as a rule, and the song's row where it is a path alone, drive
// path or of the system's own notation (which `readPath` translates); in an M3U file, which `file`
// tells by its ending, also one from the file's directory on. Empty for a comment.
std::string rowOfPlaylistLine(std::string_view line, std::string_view file,
                              const std::function<std::string(std::string_view)>& readPath);

} // namespace larkspin
