#include "host/conversation_log.h"

#include "host/conversations.h"
#include "host/new_lines.h"
#include "shell/kept_files.h"
#include "text/characters.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/text_sum.h"
#include "text/typed_words.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <cstdint>
#include <utility>

namespace larkspin {

namespace {

constexpr std::string_view setting = "log", yes = "yes", no = "no";
constexpr std::string_view homeDirectory = "@home"; // which no network's directory can be called
constexpr std::size_t longestLogName = 120;         // bytes

std::string hexOf(std::uint64_t number, int digits) {
    std::string hex;
    for (int digit = digits - 1; digit >= 0; --digit)
        hex += "0123456789abcdef"[(number >> (4 * digit)) & 0xF];
    return hex;
}

bool isPlainInName(std::string_view character, bool isFirst) {
    const char byte = character.front();
    if (!isAscii(byte))
        return visibleName(character) == character;
    return isLetter(byte) || isDigit(byte) ||
           std::string_view("#&+!-_[]{}^").find(byte) != std::string_view::npos ||
           (byte == '.' && !isFirst);
}

std::string lineOf(const KeptLine& line, const std::tm& date) {
    char stamp[32] = "";
    std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M  ", &date);
    const bool isSaid = line.kind == KeptLine::Kind::said;
    return stamp + (isSaid ? line.speaker + ": " : "") + visibleText(wordsOf(line), " ") + '\n';
}

} // namespace

std::string logName(std::string_view name) {
    const std::string folded = foldCase(name);
    std::string file;
    for (std::string_view rest = folded; !rest.empty();) {
        const std::string_view character = rest.substr(0, firstCharacter(rest).length);
        if (isPlainInName(character, file.empty()))
            file += character;
        else
            for (const char byte : character)
                file += '%' + hexOf(static_cast<unsigned char>(byte), 2);
        rest.remove_prefix(character.size());
    }
    if (file.size() <= longestLogName)
        return file.empty() ? "%" : file;
    // No name of another kind has "%-" in it.
    file.resize(fittingLength(file, longestLogName));
    return file + "%-" + hexOf(textSum(folded), 16);
}

ConversationLog::ConversationLog(EventLoop& loop, Conversations& conversations, KeptFiles& files,
                                 const DataDirectory& directory, SlashWords::Tell tell)
    : loop_(loop), conversations_(conversations), files_(files), settings_(files, directory),
      directory_(directory.logsDirectory()), tell_(std::move(tell)),
      isOn_(settings_.get(setting) == yes) {
    conversations.onKept([this](const Conversation& conversation, const KeptLine& line) {
        if (isOn_)
            gather(conversation, line);
    });
}

std::string ConversationLog::fileOf(const Conversation& conversation, const std::tm& date) const {
    char month[16] = "";
    std::strftime(month, sizeof month, ".%Y-%m.txt", &date);
    return directory_ + '\\' +
           (conversation.isAtHome() ? std::string(homeDirectory)
                                    : logName(conversations_.networkName(conversation.network()))) +
           '\\' + logName(conversation.name()) + month;
}

// What the owner has asked the program for is no part of what was said. What stands somewhere from
// before would be written with each run anew, and as of now.
void ConversationLog::gather(const Conversation& conversation, const KeptLine& line) {
    if (line.kind == KeptLine::Kind::answer || line.isUndated)
        return;
    const std::tm date = loop_.dateOf(line.at);
    const std::string text = lineOf(line, date);
    if (bytes_ + text.size() > mostWaiting) {
        ++missing_;
    } else {
        waiting_[fileOf(conversation, date)] += text;
        bytes_ += text.size();
    }
    writeSoon();
}

void ConversationLog::writeSoon() {
    if (next_ == TimerId::none)
        next_ = loop_.once(gathers, [this] { write(); });
}

// Lines may come while a slow disk is waited for.
void ConversationLog::write() {
    loop_.cancel(std::exchange(next_, TimerId::none));
    if (isWriting_)
        return writeSoon();
    isWriting_ = true;
    auto texts = std::exchange(waiting_, {});
    std::string problem;
    for (auto& [path, text] : texts) {
        const FileChange outcome = files_.append(path, text);
        if (outcome) {
            bytes_ -= text.size();
            continue;
        }
        problem = outcome.reason;
        std::string& later = waiting_[path];
        later = text + later;
    }
    isWriting_ = false;
    if (problem.empty() && missing_ > 0)
        problem = counted(std::exchange(missing_, 0), "line") + " of the log couldn't be written";
    else if (!problem.empty())
        problem = "the log couldn't be written: " + problem;
    tellProblem(problem);
}

void ConversationLog::tellProblem(const std::string& problem) {
    if (problem != std::exchange(problem_, problem) && !problem.empty())
        tell_(problem);
}

SlashWord ConversationLog::word() {
    return {"log",
            "[on|off]",
            "tells where the log of what is said is, or turns it on and off",
            [this](std::string_view rest) { return run(rest); },
            {},
            "larkspin"};
}

void ConversationLog::turn(bool isOn) {
    settings_.put(setting, isOn ? yes : no);
    isOn_ = isOn;
    write();
}

bool ConversationLog::run(std::string_view rest) {
    const std::string wanted = foldCase(takeWord(rest));
    const bool isWanted = wanted == "on";
    if (!takeWord(rest).empty() || !(wanted.empty() || isWanted || wanted == "off"))
        return false;
    if (!wanted.empty())
        turn(isWanted);
    const std::string place = visibleText(directory_, " ");
    tell_(isOn_ ? "what is said is written down in " + place
                : "what is said isn't written down; /log on does so, in " + place);
    return true;
}

} // namespace larkspin
