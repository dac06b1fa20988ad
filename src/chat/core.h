// What nearly every unit works with, handed over as one. A unit's constructor names beside it only
// what is special to the unit.
#pragma once

namespace larkspin {

struct AppState;
class Dialogs;
class EventLoop;
class Recitals;
class Reply;
class Settings;

struct Core {
    AppState& state;
    Settings& settings;
    EventLoop& loop;
    Dialogs& dialogs;
    Reply& reply;
    Recitals& recitals;
};

} // namespace larkspin
