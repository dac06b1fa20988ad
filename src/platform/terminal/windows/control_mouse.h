// What the mouse does to a control: a press, the way while the button is held, its release, and the
// wheel. What comes of them goes through shell/control_events.
#pragma once

#include "platform/terminal/windows/control_keys.h"

namespace larkspin {

// The button goes down. A second press of a double click comes here only where nothing reacts to a
// double click.
void pressAt(const ControlTarget& target, const MouseStroke& mouse);

// The button is held, and the mouse is over the control or not.
void dragTo(const ControlTarget& target, const MouseStroke& mouse);

// It comes up. Over the control it is a click.
void releaseAt(const ControlTarget& target, const MouseStroke& mouse);

// One step of the wheel, on what that turns.
bool isScrolled(const Control& control);
void turnWheel(const ControlTarget& target, int way);

// In a list: the row there; `noRow` for none, and in what is no list.
int rowAt(const ControlTarget& target, const MouseStroke& mouse);

} // namespace larkspin
