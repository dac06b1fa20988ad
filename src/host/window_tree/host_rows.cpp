#include "host/window_tree/host_rows.h"

#include "host/window_tree/host_bytes.h"
#include "host/window_tree/window_calls.h"
#include "host/window_tree/window_names.h"
#include "text/parts.h"
#include "text/row_list.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace larkspin {

namespace {

// A row's data is the address of a record of the client's. There stands where the person's own
// record is, and in that the name, ended by a zero unless it fills its field.
constexpr std::uint64_t pointerAt = 28;
constexpr std::size_t pointerSize = 4;
constexpr std::uint64_t nameAt = 6;
constexpr std::size_t nameSize = 16;

std::string nameOf(WindowCalls& calls, ProcessHandle process, HostHandle list, std::int64_t row) {
    const auto data = calls.send(list, window::rowData, static_cast<std::uint64_t>(row), 0);
    const std::uint64_t record = static_cast<std::uint32_t>(data); // the client has 32 bits
    const auto pointer = calls.readMemory(process, record + pointerAt, pointerSize);
    if (!pointer)
        return {};
    const auto name = calls.readMemory(process, littleEndian(*pointer) + nameAt, nameSize);
    return name ? fromSingleByte(partedAt(*name, '\0').head) : std::string();
}

} // namespace

std::vector<std::string> readHostRows(WindowCalls& calls, HostHandle list) {
    std::vector<std::string> names;
    const ProcessHandle process = calls.openProcess(calls.processOf(list), window::mayReadMemory);
    if (process == 0)
        return names;
    const auto claimed = calls.send(list, window::rowCount, 0, 0);
    // The count is another program's word, so it is limited to what a list can hold here.
    const auto count = std::min<std::int64_t>(claimed, RowList::limit);
    for (std::int64_t row = 0; row < count; ++row)
        names.push_back(nameOf(calls, process, list, row));
    calls.closeProcess(process);
    return names;
}

} // namespace larkspin
