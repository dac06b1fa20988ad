// A network of the test process's own, in which there is nothing but the machine itself: ports that
// are taken nowhere else, names that a test answers for, certificates that are trusted here alone.
// It also holds for what the process starts.
#pragma once

#include "platform/posix/descriptor.h"

#include <filesystem>

namespace larkspin {

// First of all in main, before there are threads. Where the system doesn't allow it (user
// namespaces), the process stays where it is; what needs it skips itself with `isAlone`.
void enterOwnNetwork();
bool isAlone(); // with nothing but the machine itself

// Only "localhost" and "irc.test" are known, as 127.0.0.1. Other names are asked for at a name
// server at port 53 of 127.0.0.1, which is there while a test has bound it.
Descriptor nameServer();
// Answers a question there: nobody has that name.
void answerNobody(const Descriptor& nameServer);

// What the system trusts from now on: only this, for this process and what it starts.
bool trustAlone(const std::filesystem::path& certificate);

// What lies in that directory is seen in the place besides, by this process and what it starts.
// Of several with a colon between them the first one counts.
bool showBeside(const std::filesystem::path& directory, const std::string& place);
void hideAgain(const std::string& place);

} // namespace larkspin
