#include "host/chores.h"

namespace larkspin {

void Chores::kw(const std::string&) {}
void Chores::url(const std::string&) {}
void Chores::pr(const std::string&) {}
void Chores::newMail() {}
void Chores::oldMail() {}
void Chores::sentMail() {}
void Chores::signoff() {}
void Chores::closeaol() {}
void Chores::imson() {}
void Chores::imsoff() {}
void Chores::aim() {}
void Chores::hidewelc() {}
void Chores::switchMessagesOn() {}
void Chores::switchMessagesOff() {}
void Chores::hideWelcome() {}

} // namespace larkspin
