// Another program, run as a child process: its input is written, its lines are read as they
// come. Programs are looked for as a shell does. Nothing throws.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace larkspin {

// The variables of a program with a home of its own, no sound device, and nobody to order about.
std::vector<std::string> ownHome(const std::string& home);

class Child {
public:
    // With these variables ("NAME=value") in place of its own. Nothing when it can't be run.
    static std::unique_ptr<Child> start(const std::string& program,
                                        const std::vector<std::string>& variables,
                                        const std::vector<std::string>& arguments = {});
    // The same on a terminal of its own, 80 columns wide.
    static std::unique_ptr<Child> startOnTerminal(const std::string& program,
                                                  const std::vector<std::string>& variables);

    // Ends its input, waits for its end, and kills it when that doesn't come.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void tell(const std::string& line) { write(line + '\n'); }
    void write(std::string_view bytes);
    void endInput();
    void hangUp();                                            // closes its terminal
    void resize(unsigned short rows, unsigned short columns); // of its terminal

    // Reads until the text has come; `says` reads the rest of its line as well. What was read is
    // gone then. False when it takes too long or the program has ended.
    bool says(std::string_view text, std::chrono::milliseconds within);
    bool shows(std::string_view text, std::chrono::milliseconds within);
    // The next line; empty when it takes too long.
    std::string line(std::chrono::milliseconds within);
    // All that is left, until it closes its output.
    std::string rest(std::chrono::milliseconds within);

    // The exit status, once it has ended; nothing when that takes too long or a signal ended it.
    std::optional<int> ends(std::chrono::milliseconds within);

    // Waits until its output, which nobody reads, comes to a halt. Returns how many bytes are in
    // it.
    int jams(std::chrono::milliseconds within) const;

    pid_t id() const { return id_; }
    long mostMemory() const; // KB that it has held at once; 0 when it has ended

private:
    Child(pid_t id, int input, int output) : id_(id), input_(input), output_(output) {}
    bool readMore(std::chrono::steady_clock::time_point until);

    pid_t id_;
    int input_, output_; // the same descriptor for a terminal
    std::string unread_;
    std::optional<int> status_; // as waitpid tells it
};

} // namespace larkspin
