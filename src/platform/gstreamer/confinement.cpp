#include "platform/gstreamer/confinement.h"

#include <csignal>
#include <fstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr rlim_t mostMemory = rlim_t{512} << 20; // bytes, beyond what the process has already

} // namespace

void bindToParent() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

// The limit is counted from what the process has, since a build under sanitizers begins with
// terabytes.
void limitMemory() {
    std::ifstream sizes("/proc/self/statm");
    rlim_t total = 0, resident = 0, shared = 0, text = 0, library = 0, data = 0;
    if (!(sizes >> total >> resident >> shared >> text >> library >> data))
        return;
    const rlim_t limit = data * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + mostMemory;
    const rlimit both{limit, limit};
    ::setrlimit(RLIMIT_DATA, &both);
}

} // namespace larkspin
