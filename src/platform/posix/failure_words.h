// The system's error numbers in a few words for the owner, as they stand after a colon.
#pragma once

#include "shell/files.h"

namespace larkspin {

std::string failureWords(int error);

FileChange failedBecause(int error);

} // namespace larkspin
