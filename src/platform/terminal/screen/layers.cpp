#include "platform/terminal/screen/layers.h"

#include <algorithm>
#include <utility>

namespace larkspin {

void Layers::add(Layer& layer) {
    const auto above = std::ranges::find_if(
        layers_, [&](const Layer* other) { return other->rank() > layer.rank(); });
    layers_.insert(above, &layer);
    changed();
}

void Layers::raise(Layer& layer) {
    if (std::erase(layers_, &layer) > 0)
        add(layer);
}

void Layers::remove(Layer& layer) {
    if (std::erase(layers_, &layer) > 0)
        changed();
    if (pressed_ == &layer)
        pressed_ = nullptr;
}

void Layers::changed() {
    if (!std::exchange(isChanged_, true))
        whenChanged_();
}

bool Layers::has(const Layer* layer) const {
    return std::ranges::find(layers_, layer) != layers_.end();
}

bool Layers::isOnTop(const Layer& layer) const {
    return !layers_.empty() && layers_.back() == &layer;
}

std::optional<Cursor> Layers::draw(Cells& cells) {
    isChanged_ = false;
    std::optional<Cursor> cursor;
    for (Layer* const layer : layers_)
        if (const auto own = layer->draw(cells))
            cursor = own;
    return cursor;
}

bool Layers::take(const Stroke& stroke) {
    const auto* const mouse = std::get_if<MouseStroke>(&stroke);
    const bool isPress = mouse && mouse->kind == MouseStroke::Kind::press;
    const bool isHeld = mouse && (mouse->kind == MouseStroke::Kind::move ||
                                  mouse->kind == MouseStroke::Kind::release);
    if (isHeld && pressed_) {
        Layer* const layer = pressed_;
        if (mouse->kind == MouseStroke::Kind::release)
            pressed_ = nullptr;
        return layer->take(stroke);
    }
    const std::vector<Layer*> found = layers_;
    for (auto layer = found.rbegin(); layer != found.rend(); ++layer) {
        if (!has(*layer))
            continue;
        // Known before it takes the press, in whose middle the release may come.
        if (isPress)
            pressed_ = *layer;
        if ((*layer)->take(stroke))
            return true;
    }
    if (isPress)
        pressed_ = nullptr;
    return false;
}

} // namespace larkspin
