// A song's file, opened to be read by whoever plays it.
#pragma once

#include "platform/posix/descriptor.h"

#include <string>

namespace larkspin {

struct OpenedFile {
    Descriptor file;
    std::string reason = {}; // why there is none
};

// Of a native path. Waits for the disk. Nothing but a plain file is opened.
OpenedFile openToRead(const std::string& path);

} // namespace larkspin
