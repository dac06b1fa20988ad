// The commands that work on the trigger itself.
#pragma once

#include <string>

namespace larkspin {

struct AppState;
class Dialogs;
class Reply;

class TriggerCommands {
public:
    TriggerCommands(AppState& state, Reply& reply, Dialogs& dialogs)
        : state_(state), reply_(reply), dialogs_(dialogs) {}

    void trig(const std::string& wanted);
    void tellTrigger();

private:
    AppState& state_;
    Reply& reply_;
    Dialogs& dialogs_;
};

} // namespace larkspin
