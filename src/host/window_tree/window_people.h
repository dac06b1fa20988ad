// The people of a room in the client's windows: a person is selected in a list, and a button is
// pressed for him.
#pragma once

#include "host/host_client.h"
#include "host/window_tree/window_calls.h"

namespace larkspin {

class EventLoop;
class WindowTreeHost;

class WindowPeople : public RoomPeople {
public:
    WindowPeople(WindowTreeHost& host, EventLoop& loop) : host_(host), loop_(loop) {}

    People listPeople() override;
    bool ownerMayEject() override;
    Deed toggleIgnored(const Person& person) override;
    Deed eject(const Person& person) override;
    Deed allow(const Person& person) override;
    std::optional<People> beginAllowing() override;
    void endAllowing() override;

private:
    using List = HostHandle (WindowTreeHost::*)();

    People read(List list);
    std::optional<int> rowOf(const Person& person) const;
    Deed press(const char* button, List list, const Person& person);

    WindowTreeHost& host_;
    EventLoop& loop_;
};

} // namespace larkspin
