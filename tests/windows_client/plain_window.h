// Windows of any class, which are grey and show their text. What one does with its messages is a
// function; what that leaves is done as the system does it.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace larkspin::client {

struct Message {
    HWND window;
    UINT number;
    WPARAM wParam;
    LPARAM lParam;
};
using Answer = std::optional<LRESULT>; // nothing: as the system does
using Handler = std::function<Answer(const Message& message)>;

struct Place {
    int x = 0, y = 0, width = 0, height = 0;
};

// A top-level window, or a control, behind those that are there.
HWND topWindow(const char* className, const std::string& caption, const Place& place,
               Handler handler = {});
HWND childWindow(HWND parent, const char* className, const std::string& text, const Place& place,
                 Handler handler = {}, DWORD style = 0);

// One inside of another with a caption to be seen, in front of those that are there.
HWND innerWindow(HWND parent, const char* className, const std::string& caption, const Place& place,
                 Handler handler = {});

// What happens to a window while the client takes it away isn't told.
void takeAway(HWND window);
bool isGoing(HWND window);

std::string textOf(HWND window);
std::string classOf(HWND window);
HWND firstChild(HWND parent, const char* className);

// Text on white, as in a field, at its last lines if there are more than fit.
void paintField(HWND window, const std::vector<std::string>& lines, int marked = -1);

} // namespace larkspin::client
