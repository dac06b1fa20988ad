// The three play modes, of which at most one is on: repeat, shuffle, continuous. The commands
// that switch them; what a mode does stands in the mode tick.
#pragma once

#include <string>

namespace larkspin {

struct AppState;
class Reply;
class Transport;

class PlayModes {
public:
    PlayModes(AppState& state, Reply& reply, Transport& transport)
        : state_(state), reply_(reply), transport_(transport) {}

    void repeat();
    void shuffle();
    void cont();

    void repeatoff();
    void soff();
    void contoff();

private:
    void switchOn(bool AppState::*mode, const std::string& word, const std::string& label);
    void switchOff(bool AppState::*mode, const std::string& label);

    AppState& state_;
    Reply& reply_;
    Transport& transport_;
};

} // namespace larkspin
