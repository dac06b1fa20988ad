#include "host/idle_mode.h"

namespace larkspin {

void IdleMode::idle(const std::string&) {}
void IdleMode::idleoff() {}

} // namespace larkspin
