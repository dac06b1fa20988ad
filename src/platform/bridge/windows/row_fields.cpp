#include "platform/bridge/windows/row_fields.h"

namespace larkspin::bridge {

namespace {

constexpr DWORD mayReadMemory = 0xF0010;                     // standard rights, and the reading
constexpr std::size_t longestField = 256, mostRows = 10'000; // so that an answer fits in a frame

class OtherMemory {
public:
    explicit OtherMemory(HWND window) {
        DWORD process = 0;
        if (GetWindowThreadProcessId(window, &process) != 0)
            process_ = OpenProcess(mayReadMemory, FALSE, process);
    }
    OtherMemory(const OtherMemory&) = delete;
    OtherMemory& operator=(const OtherMemory&) = delete;
    ~OtherMemory() {
        if (process_ != nullptr)
            CloseHandle(process_);
    }

    bool isOpen() const { return process_ != nullptr; }
    bool read(std::uint32_t address, void* to, std::size_t size) const {
        SIZE_T got = 0;
        const auto* from = reinterpret_cast<const void*>(static_cast<std::uintptr_t>(address));
        return ReadProcessMemory(process_, from, to, size, &got) != 0 && got == size;
    }

private:
    HANDLE process_ = nullptr;
};

std::string field(const OtherMemory& memory, std::uint32_t data, const RowRecord& record) {
    std::uint32_t pointer = 0; // as it lies there: both processes are of one kind
    if (!memory.read(data + record.pointerAt, &pointer, sizeof pointer))
        return {};
    std::string name(std::min<std::size_t>(record.nameSize, longestField), '\0');
    return memory.read(pointer + record.nameAt, name.data(), name.size()) ? name : std::string();
}

} // namespace

std::vector<std::string> rowFields(SentMessages& messages, HWND list, const RowRecord& record,
                                   std::size_t most, const Deadline& deadline) {
    const OtherMemory memory(list);
    if (!memory.isOpen())
        return {};
    const LRESULT claimed = messages.send(list, LB_GETCOUNT, 0, 0, deadline).value_or(0);
    const auto count = static_cast<std::size_t>(std::max<LRESULT>(claimed, 0));
    std::vector<std::string> fields(std::min({count, most, mostRows}));
    for (std::size_t row = 0; row < fields.size() && !deadline.isOver(); ++row)
        if (const auto data = messages.send(list, LB_GETITEMDATA, row, 0, deadline))
            fields[row] = field(memory, static_cast<std::uint32_t>(*data), record);
    return fields;
}

} // namespace larkspin::bridge
