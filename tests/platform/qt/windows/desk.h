// A virtual machine whose windows stand on a real display, for tests that work them with Qt's
// events or a real mouse.
#pragma once

#include "app/program.h"
#include "platform/qt/windows/qt_windows.h"
#include "support/virtual_machine.h"

#include <QCoreApplication>
#include <QWidget>
#include <cstdlib>
#include <string>

namespace larkspin {

struct Desk : VirtualMachine {
    explicit Desk(const Lines& songs = {"a.mp3", "b.mp3", "c.mp3"}, const MainWindow& beside = {})
        : VirtualMachine(songs, 100s), main(beside) {
        settle();
    }

    // Until everything that has happened shows.
    void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
            advance(1ms);
        }
    }

    QWidget& show(const std::string& name) {
        window(name).visible = true;
        settle();
        return widget(name);
    }

    // Of a window that has been shown.
    QWidget& widget(const std::string& name) {
        if (QWidget* const found = windows.widgetOf(window(name)))
            return *found;
        std::abort();
    }
    template <typename Widget = QWidget>
    Widget& control(const std::string& windowName, const char* name) {
        if (auto* const found = widget(windowName).findChild<Widget*>(name))
            return *found;
        std::abort();
    }

    MainWindow main;
    int titleMenus = 0; // that have been asked for
    int presses = 0;    // that have been told of
    QtWindows windows{loop,
                      program->windows(),
                      {.titleMenu = [this] { ++titleMenus; }, .pressed = [this] { ++presses; }},
                      main};
};

} // namespace larkspin
