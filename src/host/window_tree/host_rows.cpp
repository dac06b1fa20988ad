#include "host/window_tree/host_rows.h"

#include "host/window_tree/host_bytes.h"
#include "text/parts.h"
#include "text/row_list.h"

namespace larkspin {

namespace {

// A row's data is the address of a record of the client's. There stands where the person's own
// record is, and in that the name, ended by a zero unless it fills its field.
constexpr RowRecord personRow{.pointerAt = 28, .nameAt = 6, .nameSize = 16};

} // namespace

std::vector<std::string> readHostRows(WindowCalls& calls, HostHandle list) {
    if (list == noHandle)
        return {};
    std::vector<std::string> names = calls.rows(list, personRow, RowList::limit);
    for (std::string& name : names)
        name = fromSingleByte(partedAt(name, '\0').head);
    return names;
}

} // namespace larkspin
