#include "host/moderation.h"

namespace larkspin {

void Moderation::x(const std::string&) {}
void Moderation::unx(const std::string&) {}
void Moderation::ban(const std::string&) {}
void Moderation::unban(const std::string&) {}

} // namespace larkspin
