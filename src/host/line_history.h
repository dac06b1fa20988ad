// The lines that the owner has typed last, wherever he types, kept for the next run: a line file in
// UTF-8 of its own, read at the start and replaced at the end. A file that can't be read is left
// alone.
#pragma once

#include <deque>
#include <string>
#include <string_view>

namespace larkspin {

class Files;

class LineHistory {
public:
    LineHistory(Files& files, std::string path);

    static constexpr std::size_t mostLines = 500, mostCharacters = 1000; // in each

    const std::deque<std::string>& lines() const { return lines_; }

    // A line equal to the last one isn't kept, and neither is one that the file couldn't hold as
    // one line. When there are too many, the oldest go. Secrets in it are masked; one that is a
    // secret for where it is typed comes masked already.
    void add(std::string_view line);

    // Replaces the file if a line has been added, without the lines that are masked.
    void save();

private:
    Files& files_;
    std::string path_;
    std::deque<std::string> lines_;
    bool isReadable_ = false;
    bool isChanged_ = false;
};

} // namespace larkspin
