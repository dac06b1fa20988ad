#include "shell/kept_files.h"

#include "shell/trace.h"

#include <algorithm>

namespace larkspin {

namespace {

// UTF-16 begins with its byte order mark. A text without the mark is known by its first eight
// bytes: in UTF-16 every other one of them is zero, as long as the letters are Latin ones.
bool isUtf16(std::string_view text) {
    constexpr std::size_t judged = 8;
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        return true;
    if (text.size() < judged)
        return false;
    const bool isSecond = text[1] == '\0';
    for (std::size_t at = 0; at < judged; ++at)
        if ((text[at] == '\0') != (at % 2 == isSecond))
            return false;
    return true;
}

} // namespace

FileRead KeptFiles::read(const std::string& path, std::size_t largest) {
    FileRead file = disk_.read(path, largest);
    // Such a file would make no sense here, and a save would destroy it, so it counts as
    // unreadable.
    if (isUtf16(file.contents))
        file = {FileRead::Outcome::failed, {}, "it is in UTF-16"};
    if (file.failed())
        unread_[path] = file.reason;
    else if (!unread_.empty())
        unread_.erase(path);
    note(path, "couldn't load ", file.reason);
    return file;
}

FileChange KeptFiles::replace(const std::string& path, const std::string& contents) {
    // The save of a file that couldn't be read fails for the reason for which reading failed.
    const auto unread = unread_.find(path);
    FileChange outcome =
        unread == unread_.end() ? disk_.replace(path, contents) : FileChange{unread->second};
    failedSaves_ += !outcome;
    note(path, "couldn't save ", outcome.reason);
    return outcome;
}

FileChange KeptFiles::traced(const char* what, const std::string& path, FileChange outcome) {
    if (!outcome)
        trace_.note("file: couldn't", std::string(what) + ' ' + path, outcome.reason);
    return outcome;
}

void KeptFiles::note(const std::string& path, const std::string& what, const std::string& reason) {
    if (reason.empty() && failures_.empty())
        return; // nothing fails now, and nothing did before
    if (!reason.empty())
        trace_.note("file:", what + path, reason);
    const std::string contents(directory_.contentsOf(path));
    if (contents.empty())
        return;
    if (reason.empty()) {
        // Telling reads files itself. Were a failure forgotten meanwhile, the next one would be
        // told anew, and on a disk that fails now and then this would never end.
        if (tellings_ == 0)
            failures_.erase(what + path);
        return;
    }
    std::string& told = failures_[what + path];
    if (told == reason)
        return;
    told = reason;
    tell(what + "<b>" + contents + "</b>:  " + reason);
}

// One thing may be kept in several files; the owner is told once.
void KeptFiles::tell(std::string text) {
    if (std::find(news_.begin(), news_.end(), text) != news_.end())
        return;
    news_.push_back(std::move(text));
    if (onNews_)
        onNews_();
}

void KeptFiles::tellNews(const std::function<void(const std::string& text)>& say) {
    ++tellings_;
    for (const std::string& text : takeNews())
        say(text);
    --tellings_;
}

void KeptFiles::onNews(Task task) {
    onNews_ = std::move(task);
    if (onNews_ && !news_.empty())
        onNews_();
}

} // namespace larkspin
