// A value of the current user's part of the registry.
#pragma once

#include "host/window_tree/window_calls.h"

#include <optional>
#include <string>

namespace larkspin::bridge {

// None where there is none, or one longer than anything that is asked for.
std::optional<RegistryValue> registryValue(const std::string& key, const std::string& name);

} // namespace larkspin::bridge
