// What stands on the screen, one above the other: the room at the bottom, windows above it in the
// order in which they came up, then menus, and boxes on top. A stroke goes to the uppermost that
// takes it. The screen is drawn again before the thread sleeps, if anything has asked for that.
#pragma once

#include "platform/terminal/screen/cells.h"
#include "platform/terminal/screen/strokes.h"
#include "shell/event_loop.h"

#include <optional>
#include <utility>
#include <vector>

namespace larkspin {

struct Cursor {
    int row = 0, column = 0;
    bool isShown = true;

    bool operator==(const Cursor&) const = default;
};

// A port between the screen and what is shown on it.
class Layer {
public:
    enum class Rank { room, window, menu, box };

    virtual ~Layer() = default;

    virtual Rank rank() const = 0;

    // On all of the screen, of which it takes what it needs. Gives where the cursor is to stand if
    // this layer has the keys, shown or not: the uppermost that gives one has it. Must not wait.
    virtual std::optional<Cursor> draw(Cells& cells) = 0;

    // Whether the stroke has been dealt with; else the layer below gets it. What the mouse does
    // between a press and its release goes to the layer that took the press, wherever it is. Called
    // from the loop, in an event of its own, so what it does may wait.
    virtual bool take(const Stroke& stroke) = 0;
};

class Layers {
public:
    // The layer must be removed before it goes. One that is added, or raised, comes above the
    // others of its rank.
    void add(Layer& layer);
    void raise(Layer& layer);
    void remove(Layer& layer);
    bool isOnTop(const Layer& layer) const; // of all

    // To be called when anything has changed that is seen. The task is called with the first change
    // after a drawing.
    void changed();
    bool isChanged() const { return isChanged_; }
    void whenChanged(Task task) { whenChanged_ = std::move(task); }

    std::optional<Cursor> draw(Cells& cells);
    bool take(const Stroke& stroke); // whether any took it; layers may come and go meanwhile

private:
    bool has(const Layer* layer) const;

    std::vector<Layer*> layers_; // from the lowest to the uppermost
    Layer* pressed_ = nullptr;   // has taken a press of the mouse whose release hasn't come
    bool isChanged_ = true;
    Task whenChanged_ = [] {};
};

} // namespace larkspin
