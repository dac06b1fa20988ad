// The room as the lowest layer of the screen: what the owner's hand does there. The line to type in
// has the keys, but for those that lead about; the mouse works everything.
#pragma once

#include "host/owner_calls.h"
#include "platform/terminal/room/room_view.h"
#include "platform/terminal/screen/layers.h"
#include "shell/menu.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class RoomLayer : public Layer {
public:
    // What it can't do itself. They are called from the loop, and may wait, but for those about
    // the screen.
    struct Tasks {
        std::function<void(const std::string& line, const Conversations::Begun& begun)> take;
        std::function<void(const std::string& place)> go; // that one comes in front
        std::function<void(const std::string& address)> openLink;
        std::function<std::vector<MenuEntry>(const std::string& name)> menuOf; // about somebody
        std::function<void(const std::string& name)> talkTo;
        std::function<void(const Menu& menu, const Cursor& at)> popUp;
        std::function<void(int row)> openMenus; // in that row of the screen
        Task help, quit, tellHowToLeave;
        Task pressed; // he has pressed something, before that acts

        // About the screen. `called` tells what calls him where he doesn't look.
        std::function<void(const OwnerCall& call)> called;
        std::function<void(const std::string& title)> title;
        Task ring;
    };

    // All must outlive it.
    RoomLayer(EventLoop& loop, Layers& layers, const ShownRoom& room,
              const Conversations& conversations, LineHistory& history, Tasks tasks);
    ~RoomLayer() override;
    RoomLayer(const RoomLayer&) = delete;
    RoomLayer& operator=(const RoomLayer&) = delete;

    // It must live on.
    void show(SongInPlay& song);

    // To be called when anything that is known of the room has changed, or how it is to look.
    void roomChanged();

    // Takes a password, as `PasswordPrompt` has it: in the line to type in.
    void askPassword(const std::string& prompt, std::function<void(std::string)> answered);
    void dismissPassword();

    Rank rank() const override { return Rank::room; }
    std::optional<Cursor> draw(Cells& cells) override { return view.draw(cells); }
    bool take(const Stroke& stroke) override;

private:
    // What the line offers or asks, which no window must hide.
    class Offers : public Layer {
    public:
        explicit Offers(RoomView& view) : view_(view) {}
        Rank rank() const override { return Rank::menu; }
        std::optional<Cursor> draw(Cells& cells) override;
        bool take(const Stroke& stroke) override;

    private:
        RoomView& view_;
    };

    void takeLines();
    void showNew();
    void tellCalls();
    bool takeKey(const KeyStroke& key);
    bool leave();
    bool takeAltKey(const KeyStroke& key);
    bool takePageKey(const KeyStroke& key);
    bool takeMouse(const MouseStroke& stroke);
    void press(const MouseStroke& stroke);
    void pressPeople(const MouseStroke& stroke);
    void turnWheel(const MouseStroke& stroke);
    void goTo(const Conversation* conversation);
    void showMenus();
    void showLinks();
    void showPeople();

    EventLoop& loop_;
    Layers& layers_;
    const Conversations& conversations_;
    Tasks tasks_;
    OwnerCalls calls_;
    std::optional<OwnerCall> call_; // that isn't over
    std::string title_;             // of the screen
    bool isErasing_ = false;        // by Ctrl-D
    std::shared_ptr<bool> lives_ = std::make_shared<bool>(true);

public:
    RoomView view;

private:
    Offers offers_{view};
};

} // namespace larkspin
