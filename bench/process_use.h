// What a running process takes of the machine, together with all that it has started.
#pragma once

#include <sys/types.h>

namespace larkspin {

// What is shared with other processes counts by its share.
double megabytes(pid_t process);

// Watched for a few seconds.
double wakeupsPerSecond(pid_t process);

} // namespace larkspin
