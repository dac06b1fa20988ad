// A part of a window by its class. Qt knows none of ours, and would take another one for it.
#pragma once

#include <QWidget>

namespace larkspin {

template <typename View> View& findView(QWidget& window) {
    View* found = nullptr;
    for (QWidget* const widget : window.findChildren<QWidget*>())
        found = found ? found : dynamic_cast<View*>(widget);
    return *found;
}

} // namespace larkspin
