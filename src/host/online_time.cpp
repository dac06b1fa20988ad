#include "host/online_time.h"

namespace larkspin {

void OnlineTime::ot() {}

} // namespace larkspin
