#include "platform/posix/standard_streams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace larkspin {

void openStandardStreams() {
    // A new descriptor takes the lowest number that is free.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR);
}

} // namespace larkspin
