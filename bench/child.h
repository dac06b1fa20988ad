// Another program, run as a child process: to its end, or with its lines read as they come.
// Programs are looked for as a shell does. Nothing throws.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace larkspin {

// The exit status, with the output thrown away; -1 when it couldn't be run.
int runToEnd(const std::vector<std::string>& command);

class Child {
public:
    // With these variables ("NAME=value") in place of its own. Nothing when it can't be run.
    static std::unique_ptr<Child> start(const std::string& program,
                                        const std::vector<std::string>& variables);

    // Ends its input, waits for its end, and kills it when that doesn't come.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // Reads on until a line holds the text. False when that takes too long or it has ended.
    bool says(std::string_view text, std::chrono::milliseconds within);
    void tell(const std::string& line);

    pid_t id() const { return id_; }

private:
    Child(pid_t id, int input, int output) : id_(id), input_(input), output_(output) {}
    bool readMore(std::chrono::steady_clock::time_point until);

    pid_t id_;
    int input_, output_;
    std::string unread_;
};

} // namespace larkspin
