#include "platform/posix/local_time.h"

namespace larkspin {

std::tm localTime(std::time_t moment) {
    ::tzset();
    std::tm local{};
    ::localtime_r(&moment, &local);
    return local;
}

} // namespace larkspin
