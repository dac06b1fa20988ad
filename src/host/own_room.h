// A room of the owner's own, where he is alone: what he types is said under his name, and so is
// what the program says for him.
#pragma once

#include "chat/chat_lines.h"
#include "host/host_client.h"

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class OwnRoom : public HostClient {
public:
    // Shows a line that was said to the owner.
    using Show = std::function<void(const ChatLine& line)>;

    OwnRoom(ChatLines& lines, std::string screenName, Show show)
        : lines_(lines), screenName_(std::move(screenName)), show_(std::move(show)) {}

    std::string currentScreenName() override { return screenName_; }
    void sendChatLine(const std::string& line) override {
        show_({screenName_, line});
        lines_.said({screenName_, line});
    }
    void clearChatInput() override {} // what the owner is typing is nobody else's

    // A line that the owner says himself, or that is said to be somebody else's. To be called from
    // an event of its own.
    void say(const std::string& line) { sayAs({screenName_, line}); }
    void sayAs(const ChatLine& line) {
        show_(line);
        lines_.heard(line);
    }

    // The same for a line that he sees already.
    void sayShown(const std::string& line) { lines_.heard({screenName_, line}); }

private:
    ChatLines& lines_;
    std::string screenName_;
    Show show_;
};

} // namespace larkspin
