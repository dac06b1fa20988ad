// A chat scanner: reports the lines said in the room to its handler while it runs.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

// One line as said in the room.
struct ChatLine {
    std::string speaker;
    std::string text;
};

class Scanner {
public:
    using Handler = std::function<void(const ChatLine&)>;

    void connect(Handler handler) { handler_ = std::move(handler); }

    // Starting a scanner that runs, or stopping one that doesn't, changes nothing.
    void startscan() { running_ = true; }
    void stopscan() { running_ = false; }
    bool running() const { return running_; }

    // The room feeds every line of every speaker to every scanner.
    void hear(const ChatLine& line) {
        if (running_)
            handler_(line);
    }

private:
    Handler handler_;
    bool running_ = false;
};

} // namespace larkspin
