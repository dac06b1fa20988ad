// The words by which the owner gets into a network: where to, as whom, by which passwords and
// certificates. What he has given for a server holds for that one alone.
#pragma once

#include "host/slash_words.h"
#include "irc/client/irc_accounts.h"
#include "irc/client/irc_known_servers.h"
#include "irc/client/irc_on_connect.h"
#include "irc/client/irc_trust.h"
#include "irc/connection/irc_identity.h"
#include "shell/event_loop.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class IrcClient;
class PasswordPrompt;

// Where the owner wants to go.
struct IrcWish {
    IrcServer server;
    std::string nick, room;
    std::string name; // of the network; blank for the host's
};

// "[as NAME] [plain] SERVER[:PORT] NICK [#ROOM]". Nothing for what makes no sense.
std::optional<IrcWish> readIrcWish(std::string_view text);

class IrcAccess {
public:
    // All must live on. `words` are those that may be run on connecting.
    IrcAccess(EventLoop& loop, IrcClient& irc, PasswordPrompt& prompt, IrcAccountFile& file,
              Files& disk, SlashWords::Tell tell, IrcOnConnect::Words words);
    ~IrcAccess();
    IrcAccess(const IrcAccess&) = delete;
    IrcAccess& operator=(const IrcAccess&) = delete;

    // These are words of his about this network: what stands after the word, and false when it
    // makes no sense.
    bool login(std::string_view rest);
    bool serverPassword(std::string_view rest);
    bool user(std::string_view rest);
    bool certificate(std::string_view rest);
    bool trust(std::string_view rest);
    bool atStart(std::string_view rest);
    bool onConnect(std::string_view rest) { return onConnect_.take(rest); }

    // Whether he has been shown a certificate, and not taken it yet.
    bool asksForTrust() const { return trust_.asks(); }
    Nanoseconds askedForTrustAt() const { return trust_.askedAt(); }

    // Whether what is typed after this line is a password.
    static bool asksPassword(std::string_view line);

    // False where there was none before.
    void connect(const IrcWish& wish);
    bool connectAgain();

    // Nothing comes any more of what is under way.
    void giveUp();

    // What makes a drive path of what the owner types as one.
    using ReadPath = std::function<std::string(std::string_view typed)>;
    void readPathsBy(ReadPath readPath) { readPath_ = std::move(readPath); }

private:
    void takeLogin(const IrcAccount& given, const std::string& password);
    void tellUser() const;

    using Take = std::function<void(const std::string& password)>;
    void ask(const std::string& prompt, Take take);
    std::string place(IrcFact what) const;
    bool set(IrcFact what, std::string_view value, bool isKept = true);
    void use();

    bool logsIn(const IrcAccount& account) const;
    void tellWhatIsLacking(const IrcAccount& account) const;
    IrcIdentity identityOf(const IrcAccount& account) const;

    EventLoop& loop_;
    IrcClient& irc_;
    PasswordPrompt& prompt_;
    IrcAccountFile& file_;
    SlashWords::Tell tell_;
    IrcKnownServers servers_;
    IrcTrust trust_;
    IrcOnConnect onConnect_;
    ReadPath readPath_ = [](std::string_view typed) { return std::string(typed); };
    TimerId unanswered_ = TimerId::none;
    int tries_ = 0;
};

} // namespace larkspin
