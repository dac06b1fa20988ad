// A described window on a terminal: it is drawn, and takes what the owner's hand does to it. What
// keys and the mouse mean to a control is told in control_keys.h and control_mouse.h.
#pragma once

#include "platform/terminal/windows/control_keys.h"
#include "platform/terminal/windows/control_mouse.h"
#include "platform/terminal/windows/stage.h"
#include "platform/terminal/windows/window_focus.h"
#include "platform/terminal/windows/window_frame.h"
#include "shell/window.h"

#include <optional>
#include <string>
#include <utility>

namespace larkspin {

class WindowLayer : public Layer {
public:
    // The window must live on, and so must the stage.
    WindowLayer(Stage& stage, Window& window, Rank rank = Rank::window)
        : stage_(stage), window_(window), rank_(rank), frame_(stage, window, rank == Rank::box),
          focus_(window) {
        stage_.add(*this);
    }
    ~WindowLayer() override { stage_.remove(*this); }
    WindowLayer(const WindowLayer&) = delete;
    WindowLayer& operator=(const WindowLayer&) = delete;

    // Brings it up to date. To be called before the thread sleeps.
    void refresh();

    Window& window() const { return window_; }
    const Area& area() const { return frame_.area(); }
    // Of a control, as it was drawn last; empty for one that isn't in sight.
    Area areaOf(const std::string& control) const;
    // The keyboard comes to it by a key, and to the control that had it last.
    void enterByKey();
    void focusOn(std::string control) { focus_.set(std::move(control)); }
    const std::string& focused() const { return focus_.name(); } // a control, perhaps hidden
    void shift(int rows, int columns);

    Rank rank() const override { return rank_; }
    std::optional<Cursor> draw(Cells& cells) override;
    bool take(const Stroke& stroke) override;

private:
    std::optional<ControlTarget> targetOf(const std::string& name);

    bool leadsIn(const KeyStroke& key) const;
    bool takeKey(const KeyStroke& key);
    bool takeKeyOfWindow(const KeyStroke& key);
    bool takeKeyOfBox(const KeyStroke& key);
    bool strikeFocused(const KeyStroke& key);
    bool focusOnField();
    bool isInField() const;
    bool goesToLine(const KeyStroke& key) const;
    bool takeText(const PasteStroke& pasted);
    void closeByKey();
    void menuByKey();

    bool takeMouse(const MouseStroke& mouse);
    void takePress(const MouseStroke& mouse, const std::string& name);
    void takeRightPress(const ControlTarget& target, const MouseStroke& mouse);
    bool takeHeld(const MouseStroke& mouse);
    void takeWheel(int way, const std::string& name);

    Stage& stage_;
    Window& window_;
    Rank rank_;
    WindowFrame frame_;
    bool isShown_ = false;
    int calls_ = 0;        // of the description that have been answered
    std::size_t seen_ = 0; // a sum of all that it shows

    WindowFocus focus_;
    std::string pressed_, underMouse_; // controls
    bool isDoubled_ = false;           // the button is down for the second time
    Cursor grip_;                      // where it went down, on the window
};

} // namespace larkspin
