// The text of an INI file: sections in square brackets, lines of key, equals sign and value.
//
// Sections and keys are found without regard to case, and blanks around them and around values
// are not part of them. A key ends at its first equals sign, so one that holds such a sign is
// cut there, both when it is read and when it is written. All else in the text stays as it is.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// The value of the first line with that key in the section; empty when there is none.
std::string_view iniValue(std::string_view contents, std::string_view section,
                          std::string_view key);

// The contents with that value in place of the old one, or with a new line at the end of the
// section, or with a new section. An empty key changes nothing. Line breaks in a value become
// blanks, since they would end it.
std::string withIniValue(std::string_view contents, std::string_view section, std::string_view key,
                         std::string_view value);

} // namespace larkspin
