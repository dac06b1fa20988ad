// The three descriptors that every process begins with.
#pragma once

namespace larkspin {

// Opens those of 0, 1 and 2 on /dev/null that are closed, so that no file opened later takes the
// place of the input or the output. To be called before anything else.
void openStandardStreams();

} // namespace larkspin
