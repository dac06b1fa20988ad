// The commands that switch silent mode.
#pragma once

namespace larkspin {

struct AppState;
class Reply;

class SilentMode {
public:
    SilentMode(AppState& state, Reply& reply) : state_(state), reply_(reply) {}

    void silent();
    void silentoff();

private:
    AppState& state_;
    Reply& reply_;
};

} // namespace larkspin
