// Drive paths (`c:\home\jo`) to native ones (`/home/jo`) and back, by syntax alone: drive `c:`
// is the root directory and the only drive.
//
// What a native name may hold and a drive path or a playlist row may not travels as stand-ins (see
// `nameFromDisk` in `text/stand_ins.h`), so that every native path has exactly one drive form.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Either separator is taken, in any number. Empty for a text that is no drive path on `c:`.
std::string nativePath(std::string_view drivePath);

// For an absolute native path. `.` and `..` are resolved by syntax, trailing separators go.
std::string drivePath(std::string_view nativePath);

} // namespace larkspin
