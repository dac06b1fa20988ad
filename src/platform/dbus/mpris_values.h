// How what a player shows is spelled on the bus.
#pragma once

#include "playback/remote_control.h"

#include <optional>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>

namespace larkspin {

const char* mprisName(RemoteView::Status status);
const char* mprisName(RemoteView::Loop loop);
std::optional<RemoteView::Loop> mprisLoop(std::string_view name);

// These append a value to an answer, and return what the library does.
int appendMediaTypes(sd_bus_message* answer); // all that it can open
int appendMetadata(sd_bus_message* answer, const RemoteView& view, const std::string& song);

} // namespace larkspin
