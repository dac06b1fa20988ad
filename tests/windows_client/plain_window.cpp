#include "plain_window.h"

#include <algorithm>
#include <memory>

namespace larkspin::client {

namespace {

constexpr char going[] = "larkspin-going";
constexpr int lineHeight = 16;

void paintGrey(HWND window) {
    PAINTSTRUCT paint;
    const HDC device = BeginPaint(window, &paint);
    RECT area;
    GetClientRect(window, &area);
    FillRect(device, &area, GetSysColorBrush(COLOR_BTNFACE));
    const bool isButton = classOf(window) == "_AOL_Icon" || classOf(window) == "Button";
    if (isButton)
        DrawEdge(device, &area, EDGE_RAISED, BF_RECT);
    SelectObject(device, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(device, TRANSPARENT);
    if ((GetWindowLongA(window, GWL_STYLE) & WS_CAPTION) != WS_CAPTION)
        DrawTextA(device, textOf(window).c_str(), -1, &area,
                  DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | (isButton ? DT_CENTER : DT_LEFT));
    EndPaint(window, &paint);
}

LRESULT CALLBACK procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
    if (number == WM_NCCREATE)
        SetWindowLongPtrA(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams));
    const auto* handler =
        reinterpret_cast<const Handler*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (handler != nullptr && *handler)
        if (const Answer answer = (*handler)({window, number, wParam, lParam}))
            return *answer;
    if (number == WM_NCDESTROY && handler != nullptr) {
        SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        RemovePropA(window, going);
        const std::unique_ptr<const Handler> last(handler);
    }
    if (number == WM_PAINT) {
        paintGrey(window);
        return 0;
    }
    const LRESULT answer = DefWindowProcA(window, number, wParam, lParam);
    if (number == WM_SETTEXT)
        InvalidateRect(window, nullptr, TRUE);
    return answer;
}

void know(const char* className) { // once
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = className;
    RegisterClassA(&windowClass);
}

HWND make(HWND parent, const char* className, const std::string& text, const Place& place,
          DWORD style, Handler handler) {
    know(className);
    auto owned = std::make_unique<Handler>(std::move(handler));
    const HWND window =
        CreateWindowExA(0, className, text.c_str(), style, place.x, place.y, place.width,
                        place.height, parent, nullptr, GetModuleHandleA(nullptr), owned.get());
    if (window == nullptr)
        return nullptr;
    // The system's own message boxes have a class that can't be had in any other way.
    if (reinterpret_cast<WNDPROC>(GetWindowLongPtrA(window, GWLP_WNDPROC)) != procedure) {
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(owned.get()));
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    }
    owned.release(); // goes with the window
    const bool isInner = (style & WS_CAPTION) == WS_CAPTION;
    if (parent != nullptr)
        SetWindowPos(window, isInner ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return window;
}

} // namespace

HWND topWindow(const char* className, const std::string& caption, const Place& place,
               Handler handler) {
    return make(nullptr, className, caption, place,
                WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, std::move(handler));
}

HWND childWindow(HWND parent, const char* className, const std::string& text, const Place& place,
                 Handler handler, DWORD style) {
    return make(parent, className, text, place, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style,
                std::move(handler));
}

HWND innerWindow(HWND parent, const char* className, const std::string& caption, const Place& place,
                 Handler handler) {
    return childWindow(parent, className, caption, place, std::move(handler),
                       WS_CAPTION | WS_CLIPCHILDREN | WS_MINIMIZEBOX | WS_SYSMENU);
}

void takeAway(HWND window) {
    if (window == nullptr || IsWindow(window) == 0)
        return;
    SetPropA(window, going, reinterpret_cast<HANDLE>(1));
    DestroyWindow(window);
}

bool isGoing(HWND window) {
    return GetPropA(window, going) != nullptr;
}

std::string textOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::string classOf(HWND window) {
    std::string name(256, '\0');
    name.resize(static_cast<std::size_t>(
        GetClassNameA(window, name.data(), static_cast<int>(name.size()))));
    return name;
}

HWND firstChild(HWND parent, const char* className) {
    return FindWindowExA(parent, nullptr, className, nullptr);
}

void paintField(HWND window, const std::vector<std::string>& lines, int marked) {
    PAINTSTRUCT paint;
    const HDC device = BeginPaint(window, &paint);
    RECT area;
    GetClientRect(window, &area);
    FillRect(device, &area, GetSysColorBrush(COLOR_WINDOW));
    DrawEdge(device, &area, EDGE_SUNKEN, BF_RECT);
    SelectObject(device, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(device, TRANSPARENT);
    const auto room = static_cast<std::size_t>(std::max<LONG>(area.bottom / lineHeight, 1));
    int y = 2;
    for (std::size_t at = lines.size() - std::min(lines.size(), room); at < lines.size(); ++at) {
        SetTextColor(device, GetSysColor(static_cast<int>(at) == marked ? COLOR_HIGHLIGHT
                                                                        : COLOR_WINDOWTEXT));
        TabbedTextOutA(device, 4, y, lines[at].c_str(), static_cast<int>(lines[at].size()), 0,
                       nullptr, 4);
        y += lineHeight;
    }
    EndPaint(window, &paint);
}

} // namespace larkspin::client
