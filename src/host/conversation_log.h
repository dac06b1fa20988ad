// The log: what conversations keep, written down as it comes, if the owner wants that. A file of
// plain text for each conversation and month, in a directory for each network.
#pragma once

#include "host/slash_words.h"
#include "shell/data_directory.h"
#include "shell/event_loop.h"
#include "shell/settings.h"

#include <chrono>
#include <cstddef>
#include <ctime>
#include <map>
#include <string>
#include <string_view>

namespace larkspin {

class Conversation;
class Conversations;
class KeptFiles;
struct KeptLine;

class ConversationLog {
public:
    // All must live on. How it stands with the log is told by `tell`.
    ConversationLog(EventLoop& loop, Conversations& conversations, KeptFiles& files,
                    const DataDirectory& directory, SlashWords::Tell tell);
    ~ConversationLog() { loop_.cancel(next_); }
    ConversationLog(const ConversationLog&) = delete;
    ConversationLog& operator=(const ConversationLog&) = delete;

    // Lines are gathered for so long, and then written together. While they can't be written no
    // more of them wait, in bytes; those that come then are missing from the log.
    static constexpr std::chrono::seconds gathers{2};
    static constexpr std::size_t mostWaiting = 1'000'000;

    bool isOn() const { return isOn_; }
    void turn(bool isOn); // and writes what has been gathered

    // `/log`, by which it is turned on and off.
    SlashWord word();

    // Writes what has been gathered, as at the end of the process. May wait for a slow disk.
    void write();

private:
    void gather(const Conversation& conversation, const KeptLine& line);
    void writeSoon();
    void tellProblem(const std::string& problem);
    bool run(std::string_view rest);
    std::string fileOf(const Conversation& conversation, const std::tm& date) const;

    EventLoop& loop_;
    Conversations& conversations_;
    KeptFiles& files_;
    Settings settings_;
    std::string directory_;
    SlashWords::Tell tell_;
    bool isOn_;
    bool isWriting_ = false;
    std::map<std::string, std::string> waiting_; // texts, by the files that they are for
    std::size_t bytes_ = 0;                      // of them
    int missing_ = 0;                            // lines
    std::string problem_;                        // that was told last
    TimerId next_ = TimerId::none;
};

// What a conversation or network is called, as the name of a file: without regard to case, never
// hidden, never leading elsewhere, and of bounded length. Other names have other files.
std::string logName(std::string_view name);

} // namespace larkspin
