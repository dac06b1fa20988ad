// The window of the room: the conversations, what is said in the one in front, who is there, and a
// line to say something in. It shows what has changed once per turn, never takes the focus for it,
// and hands on what the owner types.
#pragma once

#include "host/conversations.h"
#include "host/half_typed.h"
#include "host/owner_calls.h"
#include "host/shown_room.h"
#include "platform/qt/room/conversation_view.h"
#include "platform/qt/room/input_line.h"
#include "platform/qt/room/people_view.h"
#include "platform/qt/room/rooms_view.h"
#include "platform/qt/typed_keys.h"
#include "shell/event_loop.h"

#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QLabel;
class QSplitter;
class QVBoxLayout;

namespace larkspin {

class LineHistory;

class RoomWindow : public QWidget {
public:
    // All must outlive it.
    RoomWindow(EventLoop& loop, const ShownRoom& room, const Conversations& conversations,
               LineHistory& history);

    // To be called when anything that is known of the room has changed.
    void roomChanged() { isRoomShown_ = false; }

    void clearInput() { input_.typing.empty(); }

    // Gives the line to type in the focus; and puts a line there for the owner to say, or not.
    void turnToLine() { input_.setFocus(); }
    void offer(const std::string& line);

    // Brings the window up from the task bar and in front of all, with the focus on the line to
    // type in.
    void bringForward();

    // The task gets each typed line, and where it was begun, in an event of its own. The other one
    // says what Tab makes of a text.
    using Take = std::function<void(const std::string& line, const Conversations::Begun& begun)>;
    void onLine(Take take) { take_ = std::move(take); }
    void onTab(LineTyping::Complete complete) { input_.typing.onTab(std::move(complete)); }

    // What the owner wants to be in front, by its place, in an event of its own.
    void onGo(std::function<void(const std::string& place)> go) { go_ = std::move(go); }

    // Whether he sees the window, and so what is said in the conversation in front.
    void onLook(std::function<void(bool looks)> look) { look_ = std::move(look); }

    // What calls him in a conversation that he doesn't look at; and that this is over.
    struct Calls {
        std::function<void(const OwnerCall& call)> begin = [](const OwnerCall&) {};
        Task end = [] {};
    };
    void onCall(Calls calls) { callTasks_ = std::move(calls); }

    // The address of a link that he wants to open, in an event of its own.
    void onLink(std::function<void(const std::string& address)> open);

    // What can be done about somebody in the room; and a private talk with him.
    void onPeople(PeopleView::MenuOf menuOf, std::function<void(const std::string& name)> talk);

    // Whether each line has its time in front.
    void stamp(bool stamps) { view_.stamp(stamps); }
    void colorNames(bool colors) { view_.colorNames(colors); }

    // Room for more: at the top, over the whole width; between what is said and the line to type
    // in; and below that. The window owns them from then on.
    void addAbove(QWidget& widget);
    void addHint(QWidget& widget);
    void addBelow(QWidget& widget);

    // A line for which this is true is followed by a password, perhaps before one is asked for.
    void holdAfter(std::function<bool(const std::string& line)> line) {
        input_.typing.holdAfter(std::move(line));
    }

    using Mask = std::function<std::string(const std::string&, const Conversations::Begun&)>;
    void maskBy(Mask masked) {
        input_.typing.maskBy([this, masked = std::move(masked)](const std::string& line) {
            return masked(line, halfTyped_.begun());
        });
    }

    // Takes a password, as `PasswordPrompt` has it: in the line to type in, so that no key of it
    // can go anywhere else.
    void askPassword(const std::string& prompt, std::function<void(std::string)> answered);
    void dismissPassword();

    // The task is called when the owner closes the window, in place of minimizing it.
    void onClose(Task close) { close_ = std::move(close); }

    // What other windows are not to cover, the most important first, by places on the screen.
    std::vector<QRect> openParts() const;

    // Where the window stands, how large it is and how it is divided: for the next run, which may
    // have other screens. The task is told of changes.
    std::string place() const;
    void restorePlace(const std::string& place);
    void onPlace(Task changed) { placeChanged_ = std::move(changed); }

private:
    void layOut();
    void takeLines();
    void goTo(const Conversation* conversation);
    void post(Task task);
    void look();
    void tellCalls();
    void showLinks();
    void fitScreen();
    void placeFirst();
    void showNew();
    void showRoom();
    void showOwnName();
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

    EventLoop& loop_;
    const ShownRoom& room_;
    const Conversations& conversations_;
    RoomsView& rooms_; // these belong to the window's layout
    ConversationView& view_;
    PeopleView& people_;
    InputLine& input_;
    TypedKeys typedKeys_{{.widget = input_,
                          .isBegun = [this] { return input_.typing.isBegun(); },
                          .comesForward = [this] { bringForward(); }}};
    QLabel& count_;
    QLabel& ownName_;
    QSplitter& sides_;  // the rooms, and all else
    QSplitter& halves_; // what is said, and the people
    QVBoxLayout& rows_; // of the window
    HalfTyped halfTyped_{input_.typing, conversations_};
    OwnerCalls calls_;
    std::optional<OwnerCall> call_; // that isn't over
    Calls callTasks_;
    std::function<void(const std::string&)> openLink_ = [](const std::string&) {};
    std::string prompt_; // shown in place of the owner's name
    Take take_ = [](const std::string&, const Conversations::Begun&) {};
    std::function<void(const std::string&)> go_ = [](const std::string&) {};
    std::function<void(bool)> look_ = [](bool) {};
    Task placeChanged_ = [] {};
    Task close_ = [this] { showMinimized(); };
    bool isRoomShown_ = false;
};

} // namespace larkspin
