#include "platform/terminal/windows/screen_desktop.h"

namespace larkspin {

namespace {

constexpr int trayKey = 9;
constexpr Cursor overTheLine{1 << 20, 0}; // at the foot of any screen

} // namespace

ScreenDesktop::ScreenDesktop(Stage& stage) : stage_(stage) {
    stage_.titleMenu = [this] { popUpTrayMenu(); };
    stage_.menu.colorBy([&stage] { return stage.colors(); });
    stage_.menu.onChoice([&stage] { stage.pressed(); });
    stage_.layers.add(keys_);
}

void ScreenDesktop::removeTrayIcon() {
    icon_.reset();
    stage_.menu.close(); // what is open may be of a run that is over
}

void ScreenDesktop::popUpAt(const Menu& menu, const Cursor& place) {
    stage_.menu.popUpAt(place);
    popUp(menu);
}

void ScreenDesktop::popUpTrayMenu() {
    if (icon_)
        popUp(icon_->menu);
}

bool ScreenDesktop::Keys::take(const Stroke& stroke) {
    const auto* const key = std::get_if<KeyStroke>(&stroke);
    return key && key->kind == KeyStroke::Kind::function && desktop_.take(*key);
}

bool ScreenDesktop::take(const KeyStroke& key) {
    if (key.number != trayKey)
        return false;
    if (key.shift) {
        stage_.pressed();
        if (const Task action = icon_ ? icon_->onDoubleClick : Task())
            action();
    } else {
        stage_.menu.popUpAt(overTheLine);
        popUpTrayMenu();
    }
    return true;
}

} // namespace larkspin
