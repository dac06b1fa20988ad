#include "irc/client/irc_accounts.h"

#include "shell/kept_files.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t largestFile = 300'000;
constexpr std::string_view limitKey = "lines a minute", networkKey = "network";

} // namespace

void IrcAccountFile::keep(IrcAccount account) {
    account_ = std::move(account);
    all_.write();
}

IrcAccounts::IrcAccounts(KeptFiles& files, std::string path)
    : files_(files), path_(std::move(path)) {
    load();
}

void IrcAccounts::load() {
    const FileRead file = files_.read(path_, largestFile);
    isRead_ = !file.failed();
    read(file.contents);
    written_ = text();
}

// The first network stands at the top; each further one after a line with its name.
void IrcAccounts::read(std::string_view contents) {
    if (contents.starts_with(byteOrderMark))
        contents.remove_prefix(byteOrderMark.size()); // written by an editor
    std::vector<IrcAccount> accounts(1);
    bool isLoginWhole = true; // else the password could go to another host, or for another account
    const auto end = [&] {
        if (IrcAccount& last = accounts.back(); !std::exchange(isLoginWhole, true))
            last.loginHost = last.user = last.password = "";
    };
    while (!contents.empty()) {
        std::string_view line = takePart(contents, '\n');
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        const auto [key, value, isSetting] = partedAt(line, '=');
        if (isSetting && key == networkKey) {
            end();
            accounts.emplace_back().name = canBeIrcWord(value) ? value : "";
        } else if (isSetting && key == limitKey) {
            linesPerMinute_ = plainNumber(value, 0, mostLinesPerMinute).value_or(linesPerMinute_);
        } else if (isSetting && !takeIrcLine(accounts.back(), key, value)) {
            isLoginWhole = isLoginWhole && !key.starts_with("login") && key != "password";
        }
    }
    end();
    // The one without a server is for the next network, and comes last.
    std::stable_partition(accounts.begin(), accounts.end(),
                          [](const IrcAccount& account) { return !account.server.host.empty(); });
    for (IrcAccount& account : accounts)
        if (all_.size() < most && (all_.empty() || !all_.back()->account().server.host.empty()))
            beginNext().account_ = std::move(account);
    if (!all_.back()->account().server.host.empty())
        beginNext();
}

IrcAccountFile& IrcAccounts::beginNext() {
    return *all_.emplace_back(std::make_unique<IrcAccountFile>(*this));
}

std::unique_ptr<IrcAccountFile> IrcAccounts::remove(const IrcAccountFile& file) {
    const auto found = std::ranges::find(all_, &file, &std::unique_ptr<IrcAccountFile>::get);
    std::unique_ptr<IrcAccountFile> removed = std::move(*found);
    all_.erase(found);
    write();
    return removed;
}

void IrcAccounts::limit(int linesPerMinute) {
    linesPerMinute_ = linesPerMinute;
    write();
}

std::string IrcAccounts::text() const {
    std::string text;
    for (const auto& each : all_) {
        const std::string lines = ircLines(each->account());
        const bool isFirst = each == all_.front() && each->account().name.empty();
        if (!lines.empty() && !isFirst)
            text.append(networkKey).append("=").append(each->account().network()).append("\n");
        text += lines;
    }
    if (linesPerMinute_ > 0)
        text.append(limitKey).append("=").append(std::to_string(linesPerMinute_)).append("\n");
    return text;
}

void IrcAccounts::addLacking(const IrcAccounts& others) {
    for (const auto& other : others.all_) {
        const auto same = std::ranges::find_if(all_, [&](const auto& each) {
            return equalFolded(each->account().network(), other->account().network());
        });
        if (same != all_.end())
            addWhatIsLacking((*same)->account_, other->account());
        else // it is taken up by the next run
            (*all_.insert(all_.end() - 1, std::make_unique<IrcAccountFile>(*this)))->account_ =
                other->account();
    }
    if (linesPerMinute_ == 0)
        linesPerMinute_ = others.linesPerMinute_;
}

void IrcAccounts::write() {
    // A file that couldn't be read before may be readable now. What it holds must not get lost.
    if (!isRead_) {
        const IrcAccounts before(files_, path_);
        isRead_ = before.isRead_;
        if (isRead_) {
            addLacking(before);
            written_ = before.written_;
        }
    }
    std::string now = text();
    if (now != written_ && files_.replace(path_, now))
        written_ = std::move(now);
}

} // namespace larkspin
