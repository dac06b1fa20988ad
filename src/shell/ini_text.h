// The text of an INI file: sections in square brackets, lines of key, equals sign and value.
//
// Sections and keys are found without regard to case, and blanks around them and around values
// are not part of them. A key ends at its first equals sign, so one that holds such a sign is
// cut there, both when it is read and when it is written. A byte order mark in front of all and
// what stands after a section's closing bracket are ignored. All other text stays as it is.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace larkspin {

inline constexpr std::string_view iniBlanks = " \t\r\n\f\v";

// The value of the first line with that key in the section; empty when there is none. An empty
// key finds nothing.
std::string_view iniValue(std::string_view contents, std::string_view section,
                          std::string_view key);

// The section's values by their keys, folded, as iniValue finds each of them.
using IniValues = std::map<std::string, std::string>;
IniValues iniValues(std::string_view contents, std::string_view section);

// The contents with that value in place of the old one, or with a new line at the end of the
// section, or with a new section. Line breaks in a value become blanks, since they would end it.
// Nothing changes for an empty key, or for one that would make its line a section's header.
std::string withIniValue(std::string_view contents, std::string_view section, std::string_view key,
                         std::string_view value);

// The contents without the section's lines of that key.
std::string withoutIniKey(std::string_view contents, std::string_view section,
                          std::string_view key);

} // namespace larkspin
