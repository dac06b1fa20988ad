// What the programs on a message bus for accessibility show, read as a blind owner's screen reader
// reads it: a line for each thing in sight, with tabs between how deep it lies in its window, its
// role, its place on the display (left, top, width, height), its name, and its text or value. A
// process of its own does it, since the library keeps what it has once seen.
#include <atspi/atspi.h>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <typename Type> using Held = std::unique_ptr<Type, Unref>;

// On one line. Takes what the library gives away.
std::string plain(char* given) {
    std::string text = given ? given : "";
    g_free(given);
    for (char& each : text)
        each = each == '\n' || each == '\t' ? ' ' : each;
    return text;
}

std::string contentOf(AtspiAccessible* thing) {
    if (const Held<AtspiText> text{atspi_accessible_get_text_iface(thing)})
        return plain(atspi_text_get_text(text.get(), 0, -1, nullptr));
    if (const Held<AtspiValue> value{atspi_accessible_get_value_iface(thing)})
        return std::to_string(
            static_cast<long>(atspi_value_get_current_value(value.get(), nullptr)));
    return "";
}

AtspiRect placeOf(AtspiAccessible* thing) {
    const Held<AtspiComponent> component{atspi_accessible_get_component_iface(thing)};
    AtspiRect* const place =
        component ? atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr)
                  : nullptr;
    const AtspiRect copy = place ? *place : AtspiRect{};
    g_free(place);
    return copy;
}

bool isInSight(AtspiAccessible* thing) {
    const Held<AtspiStateSet> states{atspi_accessible_get_state_set(thing)};
    return states && atspi_state_set_contains(states.get(), ATSPI_STATE_SHOWING);
}

void readAloud(AtspiAccessible* thing, int depth) {
    const AtspiRect place = placeOf(thing);
    std::printf("%d\t%s\t%d\t%d\t%d\t%d\t%s\t%s\n", depth,
                plain(atspi_accessible_get_role_name(thing, nullptr)).c_str(), place.x, place.y,
                place.width, place.height, plain(atspi_accessible_get_name(thing, nullptr)).c_str(),
                contentOf(thing).c_str());
    const int count = atspi_accessible_get_child_count(thing, nullptr);
    for (int at = 0; at < count; ++at)
        if (const Held<AtspiAccessible> child{
                atspi_accessible_get_child_at_index(thing, at, nullptr)};
            child && isInSight(child.get()))
            readAloud(child.get(), depth + 1);
}

} // namespace

int main() {
    if (atspi_init() != 0)
        return EXIT_FAILURE;
    AtspiAccessible* const desktop = atspi_get_desktop(0);
    const int programs = atspi_accessible_get_child_count(desktop, nullptr);
    for (int at = 0; at < programs; ++at)
        if (const Held<AtspiAccessible> program{
                atspi_accessible_get_child_at_index(desktop, at, nullptr)})
            readAloud(program.get(), 0);
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS); // without the library's own cleaning up
}
