// What larkspin asks for, and the answers.
#pragma once

#include "platform/bridge/bridge_wire.h"
#include "platform/bridge/windows/activation.h"
#include "platform/bridge/windows/sent_messages.h"
#include "platform/bridge/windows/text_lookout.h"

#include <optional>
#include <string>

namespace larkspin::bridge {

class Questions {
public:
    // The body of the answer. Nothing where the question can't be read: then nothing is done.
    std::optional<std::string> answer(const Frame& question);

    // A change of the text that is watched, if there is one.
    const WatchedText* look() { return lookout_.look(); }
    bool isWatching() const { return lookout_.isOn(); }

private:
    // Each reads its question to the end before it does anything.
    void walk(const Deadline& deadline);
    void find(const Deadline& deadline);
    void text(const Deadline& deadline);
    void caption();
    void send(const Deadline& deadline);
    void sendText(const Deadline& deadline);
    void post();
    void show();
    void visible();
    void rows(const Deadline& deadline);
    void watch();
    void registry();
    void activate(const Deadline& deadline);
    void keys();

    void reply(Kind kind, const Deadline& deadline);
    std::string textOf(HWND window, const Deadline& deadline);

    SentMessages messages_;
    TextLookout lookout_{messages_};
    Activation activation_;
    Reader reader_{{}}; // of the question at hand
    Writer writer_;
};

} // namespace larkspin::bridge
