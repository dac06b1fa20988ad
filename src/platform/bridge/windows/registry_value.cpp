#include "platform/bridge/windows/registry_value.h"

#include "platform/bridge/windows/windows_api.h"

namespace larkspin::bridge {

namespace {

constexpr DWORD longestValue = 4096;

} // namespace

std::optional<RegistryValue> registryValue(const std::string& key, const std::string& name) {
    HKEY opened = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, key.c_str(), &opened) != ERROR_SUCCESS)
        return std::nullopt;
    std::string bytes(longestValue, '\0');
    DWORD type = 0, size = longestValue;
    const LSTATUS status = RegQueryValueExA(opened, name.c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(bytes.data()), &size);
    RegCloseKey(opened);
    if (status != ERROR_SUCCESS || size > longestValue)
        return std::nullopt;
    bytes.resize(size);
    return RegistryValue{type, bytes};
}

} // namespace larkspin::bridge
