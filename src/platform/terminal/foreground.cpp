#include "platform/terminal/foreground.h"

#include <unistd.h>

namespace larkspin {

bool isInForeground(int descriptor) {
    const pid_t front = ::tcgetpgrp(descriptor);
    return front < 0 || front == ::getpgrp();
}

} // namespace larkspin
