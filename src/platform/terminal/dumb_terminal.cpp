#include "platform/terminal/dumb_terminal.h"

#include <cstdlib>
#include <string_view>

namespace larkspin {

bool isDumbTerminal() {
    const char* const kind = std::getenv("TERM");
    return !kind || *kind == '\0' || std::string_view(kind) == "dumb";
}

} // namespace larkspin
