// Popup menus and the tray's menu, drawn on a terminal's screen. There is no tray: F9 opens its
// menu, also from the line to type in, and Shift-F9 stands for the double click.
#pragma once

#include "platform/terminal/windows/stage.h"
#include "shell/desktop.h"

#include <optional>
#include <vector>

namespace larkspin {

class ScreenDesktop : public Desktop {
public:
    // The stage must live on.
    explicit ScreenDesktop(Stage& stage);
    ~ScreenDesktop() override { stage_.layers.remove(keys_); }
    ScreenDesktop(const ScreenDesktop&) = delete;
    ScreenDesktop& operator=(const ScreenDesktop&) = delete;

    void addTrayIcon(const TrayIcon& icon) override { icon_ = icon; }
    void removeTrayIcon() override;
    void popUp(const Menu& menu) override { stage_.menu.popUp(menu); }

    // In a place of the screen.
    void popUpAt(const Menu& menu, const Cursor& place);
    // A bar of menus in a row of the screen; the first one opens.
    void openMenus(std::vector<Menu> bar, int row) { stage_.menu.openBar(std::move(bar), row); }

private:
    // Lies as low as the room, so that it gets what nobody above has a use for.
    class Keys : public Layer {
    public:
        explicit Keys(ScreenDesktop& desktop) : desktop_(desktop) {}
        Rank rank() const override { return Rank::room; }
        std::optional<Cursor> draw(Cells&) override { return std::nullopt; }
        bool take(const Stroke& stroke) override;

    private:
        ScreenDesktop& desktop_;
    };

    void popUpTrayMenu();
    bool take(const KeyStroke& key);

    Stage& stage_;
    Keys keys_{*this};
    std::optional<TrayIcon> icon_;
};

} // namespace larkspin
