// Drive paths (`c:\home\jo`) to native ones (`/home/jo`) and back, by syntax alone: drive `c:`
// is the root directory and the only drive.
//
// What a native name may hold and a drive path or a playlist row may not travels as stand-ins (see
// `text/stand_ins.h`), also blanks at the ends of a name, which the settings file would drop. A
// name that holds such a private character itself gets U+F000 in front of it. So every native name
// has exactly one drive form, whatever its bytes.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Either separator is taken, in any number. Empty for a text that is no drive path on `c:`.
std::string nativePath(std::string_view drivePath);

// For an absolute native path. `.` and `..` are resolved by syntax, trailing separators go.
std::string drivePath(std::string_view nativePath);

// One name without separators, to its drive form.
std::string driveName(std::string_view nativeName);

} // namespace larkspin
