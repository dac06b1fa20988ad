// The display that a program with windows needs, and Qt's application on it.
#pragma once

#include "outside/machine_facts.h"
#include "shell/command_line.h"
#include "shell/event_loop.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class QAbstractNativeEventFilter;
class QApplication;
class QObject;
struct xcb_connection_t;

namespace larkspin {

class Display {
public:
    // Without a display the process says so and ends (EX_UNAVAILABLE). The options are Qt's own,
    // such as the one by which a session manager knows the program again.
    explicit Display(const std::vector<std::string>& options);
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    // The options that a display takes. By `probe` the program only finds out whether there is one.
    static constexpr std::string_view probe = "--probe";
    static std::span<const DisplayOption> knownOptions();

    // Whether windows can be half transparent on it.
    bool drawsTransparency() const;
    DisplaySize size() const;

    // Whether there is a tray on the display itself, which only X has.
    bool hasTray() const;

    // The task is called when such a tray comes.
    void onTray(Task task);

    // `save` is called when the desktop's session is about to end, which another program may still
    // prevent, and `end` when it does end.
    void onSessionEnd(Task save, Task end);

    // Called when the display has gone, which ends the process after it. Nothing can be shown any
    // more, nor waited for. One display per process.
    void onLoss(Task task);

    // Serves events until Qt is told to quit.
    void run();

private:
    xcb_connection_t* connection() const; // null where the display isn't one of X
    bool isOwned(std::string_view name) const;

    std::unique_ptr<QApplication> application_;
    std::unique_ptr<QAbstractNativeEventFilter> newcomers_;
    std::unique_ptr<QObject> quits_;
};

} // namespace larkspin
