#include "companions/style_commands.h"

#include "chat/reply.h"
#include "shell/settings.h"

namespace larkspin {

void StyleCommands::set(const char* key, const std::string& value, const char* confirmation) {
    if (reply_.silentguard())
        return;
    settings_.put(key, value);
    reply_.saychat(confirmation);
}

} // namespace larkspin
