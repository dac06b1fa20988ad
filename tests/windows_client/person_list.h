// A list of people. Each row's data is the address of a record, in which a pointer leads to the
// name.
#pragma once

#include "plain_window.h"

#include <memory>
#include <string>
#include <vector>

namespace larkspin::client {

class PersonList {
public:
    void show(HWND parent, const Place& place); // a new window, with whom it has
    void set(const std::vector<std::string>& names);
    const std::vector<std::string>& names() const { return names_; }
    int row() const { return row_; } // the one that was selected last; -1 at first
    HWND window() const { return window_; }

private:
    struct Entry;
    struct Record { // as other programs know it
        char before[28];
        Entry* entry;
    };
    struct Entry {
        char before[6];
        char name[16];
    };

    Answer answer(const Message& message);

    HWND window_ = nullptr;
    std::vector<std::string> names_;
    std::vector<std::unique_ptr<Entry>> entries_;
    std::vector<std::unique_ptr<Record>> records_;
    int row_ = -1;
};

} // namespace larkspin::client
