// A song's file, opened to be read by whoever plays it.
#pragma once

#include "platform/posix/descriptor.h"

#include <string>

namespace larkspin {

struct OpenedFile {
    Descriptor file;
    std::string reason = {}; // why there is none
};

// Opens the file of a native path, waiting for the disk. Opens plain files only.
OpenedFile openToRead(const std::string& path);

} // namespace larkspin
