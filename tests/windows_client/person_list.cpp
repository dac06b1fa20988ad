#include "person_list.h"

#include <algorithm>
#include <cstddef>

namespace larkspin::client {

void PersonList::show(HWND parent, const Place& place) {
    window_ = childWindow(parent, "_AOL_Listbox", "", place,
                          [this](const Message& message) { return answer(message); });
}

void PersonList::set(const std::vector<std::string>& names) {
    static_assert(offsetof(Record, entry) == 28);
    static_assert(offsetof(Entry, name) == 6);
    names_ = names;
    entries_.clear();
    records_.clear();
    for (const std::string& name : names_) {
        entries_.push_back(std::make_unique<Entry>());
        std::ranges::fill(entries_.back()->before, '?');
        name.copy(entries_.back()->name, sizeof entries_.back()->name);
        records_.push_back(std::make_unique<Record>());
        std::ranges::fill(records_.back()->before, '?');
        records_.back()->entry = entries_.back().get();
    }
    if (window_ != nullptr)
        InvalidateRect(window_, nullptr, TRUE);
}

Answer PersonList::answer(const Message& message) {
    const std::size_t row = message.wParam;
    switch (message.number) {
    case LB_GETCOUNT:
        return static_cast<LRESULT>(records_.size());
    case LB_GETITEMDATA:
        return row < records_.size() ? reinterpret_cast<LRESULT>(records_[row].get()) : LB_ERR;
    case LB_SETCURSEL:
        row_ = static_cast<int>(row);
        InvalidateRect(message.window, nullptr, TRUE);
        return row_;
    case WM_PAINT:
        paintField(message.window, names_, row_);
        return 0;
    case WM_NCDESTROY:
        window_ = nullptr;
        row_ = -1;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace larkspin::client
