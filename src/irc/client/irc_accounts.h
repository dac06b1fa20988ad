// All networks that the owner has asked for, and the file that keeps them for the next run.
#pragma once

#include "irc/client/irc_account.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class IrcAccounts;
class KeptFiles;

// What is kept of one of them.
class IrcAccountFile {
public:
    explicit IrcAccountFile(IrcAccounts& all) : all_(all) {}

    const IrcAccount& account() const { return account_; }

    // Writes the file if the account has changed, readable by the owner alone. The password is
    // written only if he wants it kept.
    void keep(IrcAccount account);

private:
    friend class IrcAccounts;

    IrcAccounts& all_;
    IrcAccount account_;
};

inline constexpr int mostLinesPerMinute = 10'000;

class IrcAccounts {
public:
    // A line that makes no sense, or isn't known, counts as if it weren't there; one about a login
    // takes the whole login with it.
    IrcAccounts(KeptFiles& files, std::string path);
    IrcAccounts(const IrcAccounts&) = delete;
    IrcAccounts& operator=(const IrcAccounts&) = delete;

    static constexpr std::size_t most = 30;

    // The last one is for the network that is asked for next, and has no server yet.
    const std::vector<std::unique_ptr<IrcAccountFile>>& all() const { return all_; }

    // When the last one has got its server: there is a next one again.
    IrcAccountFile& beginNext();
    std::unique_ptr<IrcAccountFile> remove(const IrcAccountFile& file); // no more in the file

    int linesPerMinute() const { return linesPerMinute_; } // said at most; 0 for no limit
    void limit(int linesPerMinute);

    // If the file couldn't be read before, it is read for what these accounts lack.
    void write();

private:
    void load();
    void read(std::string_view contents);
    void addLacking(const IrcAccounts& others);
    std::string text() const;

    KeptFiles& files_;
    std::string path_;
    bool isRead_ = false;
    std::string written_;
    int linesPerMinute_ = 0;
    std::vector<std::unique_ptr<IrcAccountFile>> all_;
};

} // namespace larkspin
