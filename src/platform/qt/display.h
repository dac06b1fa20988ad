// The display that a program with windows needs, and Qt's application on it.
#pragma once

#include "outside/machine_facts.h"
#include "shell/event_loop.h"

#include <memory>
#include <string_view>

class QAbstractNativeEventFilter;
class QApplication;
class QObject;

namespace larkspin {

class Display {
public:
    // Without a display this is told, and the process ends (EX_UNAVAILABLE). Qt takes what it knows
    // of the arguments: by one of them a session manager knows the program again.
    Display(int count, char** arguments);
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    // Windows can be half transparent on it.
    bool drawsTransparency() const;
    DisplaySize size() const;

    // A tray that stands on the display itself, as on X alone.
    bool hasTray() const;

    // Called when one comes to the display.
    void onTray(Task task);

    // As the desktop's session is about to end, which another program may still prevent, what there
    // is to be saved is saved; as it does end, the second task is called.
    void onSessionEnd(Task save, Task end);

    // Called when the display has gone, which ends the process after it. Nothing can be shown any
    // more, nor waited for. One display per process.
    void onLoss(Task task);

    // Serves events until Qt is told to quit.
    void run();

private:
    bool isX() const;
    bool isOwned(std::string_view name) const; // on X

    std::unique_ptr<QApplication> application_;
    std::unique_ptr<QAbstractNativeEventFilter> newcomers_;
    std::unique_ptr<QObject> quits_;
};

} // namespace larkspin
