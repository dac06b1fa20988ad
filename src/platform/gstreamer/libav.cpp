#include "platform/gstreamer/libav.h"

namespace larkspin {

const Libav* Libav::get() {
    static const Libav libraries;
    return libraries.isWhole_ ? &libraries : nullptr;
}

} // namespace larkspin
