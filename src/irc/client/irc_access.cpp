#include "irc/client/irc_access.h"

#include "irc/client/irc_client.h"
#include "irc/client/password_prompt.h"
#include "shell/dialogs.h"
#include "text/blanks.h"
#include "text/characters.h"
#include "text/fold.h"
#include "text/parts.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <optional>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestRealName = 200;

bool isNone(std::string_view word) {
    return equalFolded(word, "none");
}

// What goes there can't be read by anybody on the way.
bool isThisMachine(std::string_view host) {
    return equalFolded(host, "localhost") || host == "::1" || host.starts_with("127.");
}

} // namespace

IrcAccess::IrcAccess(EventLoop& loop, IrcClient& irc, PasswordPrompt& prompt, IrcAccountFile& file,
                     Files& disk, SlashWords::Tell tell, IrcOnConnect::Words words)
    : loop_(loop), irc_(irc), prompt_(prompt), file_(file), tell_(tell),
      servers_(loop, file, disk, tell), trust_(loop, file, tell, [this] { use(); }),
      onConnect_(loop, irc, file, tell, std::move(words)) {
    irc_.keepBy(
        {.completed = [this](IrcServer server) { return servers_.completed(std::move(server)); },
         .distrusted = [this](const IrcServer& server,
                              const IrcCertificate& shown) { trust_.distrusted(server, shown); },
         .secured = [this](const IrcServer& server,
                           std::chrono::seconds span) { servers_.secured(server, span); }},
        [this](const Task& goOn) { onConnect_.welcomed(goOn); });
}

IrcAccess::~IrcAccess() {
    loop_.cancel(unanswered_);
}

bool IrcAccess::asksPassword(std::string_view line) {
    const auto [word, rest, hasRest] = partedAt(line, ' ');
    return SlashWords::isMeantForIt(line) &&
           (equalFolded(word, "/login") ||
            (equalFolded(word, "/pass") && !isNone(withoutBlanks(rest))));
}

std::optional<IrcWish> readIrcWish(std::string_view text) {
    IrcWish wish;
    std::string_view word = takeWord(text);
    if (equalFolded(word, "as")) {
        wish.name = takeWord(text);
        word = takeWord(text);
    }
    const bool isPlain = equalFolded(word, "plain");
    if (isPlain)
        word = takeWord(text);
    const auto server = readIrcServer(word, !isPlain);
    wish.nick = takeWord(text);
    wish.room = takeWord(text);
    if (!server || !canBeIrcNick(wish.nick) || !(wish.room.empty() || canBeIrcWord(wish.room)) ||
        !(wish.name.empty() || canBeIrcWord(wish.name)) || !withoutBlanks(text).empty())
        return std::nullopt;
    wish.server = *server;
    return wish;
}

void IrcAccess::connect(const IrcWish& wish) {
    IrcAccount account = file_.account();
    account.server = wish.server;
    account.nick = wish.nick;
    account.room = wish.room;
    if (!wish.name.empty())
        account.name = wish.name;
    file_.keep(std::move(account));
    connectAgain();
}

bool IrcAccess::trust(std::string_view rest) {
    return trust_.trust(withoutBlanks(rest));
}

bool IrcAccess::connectAgain() {
    IrcAccount account = file_.account();
    if (account.server.host.empty() || account.nick.empty())
        return false;
    // An account that was given without a network belongs to the first one after that.
    if (account.loginHost.empty() && !account.password.empty())
        account.loginHost = account.server.host;
    account.server = servers_.safe(account.server);
    account.facts.adopt(account.server);
    file_.keep(account);
    trust_.forget();
    const int number = ++tries_;
    servers_.loadCertificate(account.server);
    if (number != tries_)
        return true; // he has asked for another one while the disk was waited for
    account = file_.account();
    tellWhatIsLacking(account);
    irc_.connect(account.network(), servers_.completed(account.server), identityOf(account),
                 account.room);
    return true;
}

void IrcAccess::giveUp() {
    ++tries_;
    trust_.forget();
    if (unanswered_ == TimerId::none)
        return;
    loop_.cancel(std::exchange(unanswered_, TimerId::none));
    prompt_.dismiss();
}

bool IrcAccess::logsIn(const IrcAccount& account) const {
    return equalFolded(account.loginHost, account.server.host) && !account.password.empty();
}

void IrcAccess::tellWhatIsLacking(const IrcAccount& account) const {
    const std::string host = visibleName(account.server.host);
    const bool isLoginFor = equalFolded(account.loginHost, account.server.host);
    if (!account.user.empty() && !logsIn(account) && !(isLoginFor && servers_.hasCertificate()))
        tell_("you don't log in as " + visibleName(account.user) +
              (isLoginFor ? ": there is no password"
                          : ", which is for " + visibleName(account.loginHost)));
    if (!account.server.encrypted && !identityOf(account).serverPassword.empty() &&
        !isThisMachine(account.server.host))
        tell_("the password of " + host + " goes there as everybody on the way can read it");
}

IrcIdentity IrcAccess::identityOf(const IrcAccount& account) const {
    const auto fact = [&account](IrcFact what) {
        return account.facts.get(what, IrcServerFacts::placeOf(what, account.server));
    };
    return {.nick = account.nick,
            .account = logsIn(account) ? account.user : "",
            .password = logsIn(account) ? account.password : "",
            .user = fact(IrcFact::user),
            .realName = fact(IrcFact::realName),
            .serverPassword = fact(IrcFact::password)};
}

void IrcAccess::ask(const std::string& prompt, Take take) {
    prompt_.ask(prompt, [this, take = std::move(take)](const std::string& password) {
        loop_.cancel(std::exchange(unanswered_, TimerId::none));
        if (password.empty())
            tell_("without a password all stays as it was");
        else if (!canBeIrcPassword(password))
            tell_("this can't be a password");
        else
            take(password);
    });
    loop_.cancel(unanswered_);
    unanswered_ = loop_.once(answerLimit, [this] {
        prompt_.dismiss();
        tell_("nobody has typed a password");
    });
}

bool IrcAccess::login(std::string_view rest) {
    IrcAccount account = file_.account();
    account.user = takeWord(rest);
    const std::string_view keep = takeWord(rest);
    account.keepsPassword = equalFolded(keep, "keep");
    if (!canBeIrcWord(account.user) || keep.empty() == account.keepsPassword ||
        !withoutBlanks(rest).empty())
        return false;
    // The account is one of the network that the owner is on, or else of the next one.
    account.loginHost = irc_.isOn() ? account.server.host : "";
    ask("password of " + visibleName(account.user),
        [this, account](const std::string& password) { takeLogin(account, password); });
    return true;
}

// The connection stays as it is, since a new one would leave its rooms.
void IrcAccess::takeLogin(const IrcAccount& given, const std::string& password) {
    IrcAccount kept = file_.account();
    kept.user = given.user;
    kept.password = password;
    kept.loginHost = given.loginHost;
    kept.keepsPassword = given.keepsPassword;
    file_.keep(kept);
    tell_("you log in as " + visibleName(kept.user) + " from the next /connect on");
}

// The server that the owner is on, or trying to reach; else the next one.
std::string IrcAccess::place(IrcFact what) const {
    return irc_.isOn() ? IrcServerFacts::placeOf(what, file_.account().server) : "";
}

bool IrcAccess::set(IrcFact what, std::string_view value, bool isKept) {
    IrcAccount account = file_.account();
    const bool isSet = account.facts.set(what, place(what), value, isKept);
    if (isSet)
        file_.keep(std::move(account));
    else
        tell_("larkspin keeps no more about servers");
    return isSet;
}

// Where a connection isn't made yet, what was given is tried at once. One that is made stays as it
// is, since a new one would leave its rooms.
void IrcAccess::use() {
    if (irc_.state() == IrcClient::State::connecting)
        connectAgain();
    else if (irc_.isOn())
        irc_.identify(identityOf(file_.account()));
}

bool IrcAccess::serverPassword(std::string_view rest) {
    const std::string_view word = takeWord(rest);
    const bool isKept = equalFolded(word, "keep");
    if (!withoutBlanks(rest).empty() || (!word.empty() && !isKept && !isNone(word)))
        return false;
    const std::string server =
        irc_.isOn() ? visibleName(file_.account().server.host) : "the next server";
    if (isNone(word)) {
        if (set(IrcFact::password, ""))
            tell_(server + " is told no password from the next connection on");
        use();
        return true;
    }
    ask("password of " + server,
        [this, server, isKept, at = place(IrcFact::password)](const std::string& password) {
            // He may have gone elsewhere meanwhile, where it isn't for.
            if (at != place(IrcFact::password))
                return tell_("you are elsewhere now: the password is forgotten");
            if (set(IrcFact::password, password, isKept))
                tell_(server + " is told that password from the next connection on");
            use();
        });
    return true;
}

bool IrcAccess::user(std::string_view rest) {
    const std::string_view name = takeWord(rest);
    const std::string realName(withoutBlanks(rest));
    if (name.empty())
        return tellUser(), true;
    const bool drops = isNone(name) && realName.empty();
    if (!canBeIrcWord(name) || realName.size() > longestRealName || hasControls(realName))
        return false;
    if (!set(IrcFact::user, drops ? "" : name) || !set(IrcFact::realName, realName))
        return true;
    use();
    tellUser();
    return true;
}

void IrcAccess::tellUser() const {
    const IrcServerFacts& facts = file_.account().facts;
    const std::string name = facts.get(IrcFact::user, place(IrcFact::user)),
                      realName = facts.get(IrcFact::realName, place(IrcFact::realName));
    tell_("your user name is " + (name.empty() ? "larkspin" : visibleName(name)) +
          ", your real name " + (realName.empty() ? "your nick" : visibleName(realName)));
}

bool IrcAccess::atStart(std::string_view rest) {
    const std::string_view word = takeWord(rest);
    const bool isOn = equalFolded(word, "on");
    if (!withoutBlanks(rest).empty() || !(word.empty() || isOn || equalFolded(word, "off")))
        return false;
    IrcAccount account = file_.account();
    if (account.server.host.empty())
        return tell_("no network is known: /connect leads to one"), true;
    if (!word.empty())
        account.isForStart = isOn;
    file_.keep(account);
    const std::string name = visibleName(account.network());
    tell_(account.isForStart
              ? "larkspin comes back to " + name + " when it starts, if you are there at the end"
              : "larkspin doesn't go to " + name + " by itself when it starts");
    return true;
}

bool IrcAccess::certificate(std::string_view rest) {
    const std::string_view typed = withoutBlanks(rest);
    if (typed.empty()) {
        const std::string path =
            file_.account().facts.get(IrcFact::certificate, place(IrcFact::certificate));
        tell_(path.empty() ? "you show no certificate"
                           : "you show that of " + visibleText(path, " "));
        return true;
    }
    const std::string path = isNone(typed) ? "" : readPath_(typed);
    if (path.size() > IrcServerFacts::longestValue || hasControls(path))
        return false;
    if (!path.empty() && servers_.readCertificate(path).empty())
        return true;
    if (set(IrcFact::certificate, path)) {
        if (path.empty() && irc_.isOn())
            servers_.loadCertificate(file_.account().server);
        tell_(path.empty() ? "you show no certificate from the next connection on"
                           : "you show that certificate from the next /connect on");
    }
    return true;
}

} // namespace larkspin
