// The tray icon and popup menus. A menu is made anew each time it opens, one is open at a time, and
// what is chosen from it comes as an event of its own.
#pragma once

#include "shell/desktop.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QMenu;
class QSystemTrayIcon;

namespace larkspin {

class QtDesktop : public Desktop {
public:
    explicit QtDesktop(EventLoop& loop);
    ~QtDesktop() override;
    QtDesktop(const QtDesktop&) = delete;
    QtDesktop& operator=(const QtDesktop&) = delete;

    void addTrayIcon(const TrayIcon& icon) override;
    void removeTrayIcon() override;
    void popUp(const Menu& menu) override;

    // `hasTray` tells whether there is a tray of any kind now. `trayCame` is to be called when one
    // has come.
    void findTrayBy(std::function<bool()> hasTray) { hasTray_ = std::move(hasTray); }
    void trayCame() { showIcon(); }

    // The task is called instead when there is no tray for the icon.
    void withoutTray(Task task) { withoutTray_ = std::move(task); }

    // The task is called at once when the owner chooses from a menu.
    void onPress(Task task) { pressed_ = std::move(task); }

    // Whether there is an icon in a tray, from which the program can be worked.
    bool isInTray() const;

    // Entries of the front end's own, which stand above all others in the icon's menu.
    void addToTrayMenu(std::vector<MenuEntry> entries) { ownEntries_ = std::move(entries); }

    // Opens the icon's menu at the pointer, for an owner without a tray.
    void popUpTrayMenu();

    // From now on nothing of Qt's is touched, since its display is gone.
    void loseDisplay() { hasDisplay_ = false; }

private:
    void showIcon();
    void fillTrayMenu();
    std::function<void(const Task& action)> chooses();
    bool isDrawnByDesktop() const;
    void takeClick(int reason);
    void toggle();

    EventLoop& loop_;
    std::function<bool()> hasTray_ = [] { return true; };
    Task withoutTray_ = [] {};
    Task pressed_ = [] {};
    std::vector<MenuEntry> ownEntries_;
    std::optional<TrayIcon> icon_;
    std::unique_ptr<QMenu> trayMenu_, popup_;
    std::unique_ptr<QSystemTrayIcon> tray_; // once there is one
    TimerId giveUp_ = TimerId::none;        // on a tray that starts together with the program
    std::optional<Nanoseconds> toggledAt_;
    bool hasDisplay_ = true;
};

} // namespace larkspin
