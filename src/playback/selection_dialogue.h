// The dialogue about a search with several hits: the owner has them recited, views them in the
// commands window, takes one, or doesn't want any.
//
// What doesn't fit the moment has no effect and no answer.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class ChoiceRecital;
class Choices;
class PlaySelection;
class Room;
class Transport;

class SelectionDialogue {
public:
    SelectionDialogue(const Core& core, Room& room, Choices& choices, ChoiceRecital& recital,
                      PlaySelection& selection, Transport& transport)
        : state_(core.state), reply_(core.reply), room_(room), choices_(choices), recital_(recital),
          selection_(selection), transport_(transport) {}

    // The commands.
    void yes();
    void no();
    void view();
    void cancel();
    void m(const std::string& text); // takes the choice of that number

    // Does the same as `view` but says nothing. False when there is nothing to show.
    bool showChoices();

    // In the commands window: a double click on the current choice, and the close label.
    void startClicked();
    void close();

private:
    void endSelection();

    AppState& state_;
    Reply& reply_;
    Room& room_;
    Choices& choices_;
    ChoiceRecital& recital_;
    PlaySelection& selection_;
    Transport& transport_;
};

} // namespace larkspin
