// The commands that set the style of what the program says: fonts, colours and ornaments. A value
// is kept as typed, without a check, and shows from the confirmation of its own change on.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class StyleCommands {
public:
    explicit StyleCommands(const Core& core) : settings_(core.settings), reply_(core.reply) {}

    void ac(const std::string& value) { set("ascii color", value, "ascii color set"); }
    void fc(const std::string& value) { set("font color", value, "font color set"); }
    void font(const std::string& value) { set("font", value, "font style set"); }
    void af(const std::string& value) { set("afont", value, "ascii font style set"); }
    void ascii(const std::string& value) { set("ascii", value, "ascii set"); }
    void ec(const std::string& value) { set("eascii color", value, "end ascii color set"); }
    void ef(const std::string& value) { set("efont", value, "end ascii font style set"); }
    void eascii(const std::string& value) { set("eascii", value, "end ascii set"); }

private:
    void set(const char* key, const std::string& value, const char* confirmation);

    Settings& settings_;
    Reply& reply_;
};

} // namespace larkspin
