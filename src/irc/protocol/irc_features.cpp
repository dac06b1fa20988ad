#include "irc/protocol/irc_features.h"

#include "irc/protocol/irc_message.h"
#include "text/characters.h"
#include "text/number.h"
#include "text/parts.h"

namespace larkspin {

namespace {

// What holds until a server tells something else, and after it has taken that back.
const IrcFeatures usual;

char folded(char c, CaseMapping mapping) {
    if (mapping == CaseMapping::ascii || isLetter(c))
        return smallAscii(c);
    if (c >= '[' && c <= ']')
        return static_cast<char>(c - '[' + '{');
    return c == '^' && mapping == CaseMapping::rfc1459 ? '~' : c;
}

// An unknown mapping is that of a server that folds more than ASCII. Its ASCII letters fold as
// everywhere.
CaseMapping mappingNamed(std::string_view name) {
    if (name == "rfc1459")
        return CaseMapping::rfc1459;
    return name == "strict-rfc1459" || name == "rfc1459-strict" ? CaseMapping::rfc1459Strict
                                                                : CaseMapping::ascii;
}

// A rank's mode is a letter, large or small, so there can't be more.
constexpr std::size_t mostRanks = 52;

constexpr int mostModesInLine = 20;
constexpr int mostLinesOfHistory = 1'000'000;

// "(ov)@+"; nothing at all where there are no ranks.
void readRanks(std::string_view value, IrcFeatures& features) {
    const auto [modes, signs, isWhole] = partedAt(value, ')');
    if (value.empty()) {
        features.rankModes = features.rankSigns = "";
    } else if (isWhole && modes.starts_with('(') && modes.size() == signs.size() + 1 &&
               signs.size() <= mostRanks) {
        features.rankModes = modes.substr(1);
        features.rankSigns = signs;
    }
}

// "beI,k,l,imnpst"
void readModes(std::string_view value, IrcFeatures& features) {
    for (std::string* kind :
         {&features.listModes, &features.parameterModes, &features.setParameterModes})
        *kind = takePart(value, ',');
}

} // namespace

std::string foldIrcName(std::string_view name, CaseMapping mapping) {
    std::string result(name);
    for (char& c : result)
        c = folded(c, mapping);
    return result;
}

void IrcFeatures::read(const IrcMessage& message) {
    // The first parameter is the owner's name and the last one is a sentence; the features are
    // between them.
    for (std::size_t number = 1; number + 1 < message.parameters.size(); ++number)
        readWord(message.parameters[number]);
}

void IrcFeatures::readWord(std::string_view word) {
    const auto [name, value, hasValue] = partedAt(word, '=');
    if (name == "PREFIX")
        readRanks(value, *this);
    else if (name == "CHANMODES")
        readModes(value, *this);
    else if (name == "CHANTYPES")
        channelTypes = value;
    else if (name == "STATUSMSG")
        channelRankSigns = value;
    else if (name == "MONITOR")
        hasMonitor = true;
    else if (name == "CASEMAPPING" && !isMappingTold_)
        caseMapping = mappingNamed(value), isMappingTold_ = true;
    else if (name == "MODES")
        modesInLine = static_cast<std::size_t>(
            plainNumber(value, 1, mostModesInLine).value_or(mostModesInLine)); // without a bound
    else if (name == "CHATHISTORY")
        mostHistory =
            static_cast<std::size_t>(plainNumber(value, 0, mostLinesOfHistory).value_or(0));
    else if (name == "ELIST")
        listFilters = value;
    else if (name == "EXTBAN")
        readExtendedMasks(value);
    else if (name == "ACCOUNTEXTBAN")
        readAccountKinds(value);
    else if (name == "WHOX")
        tellsAccounts = true;
    else if (word == "-PREFIX")
        rankModes = usual.rankModes, rankSigns = usual.rankSigns;
    else if (word == "-STATUSMSG")
        channelRankSigns.clear();
    else if (word == "-CHANTYPES")
        channelTypes = usual.channelTypes;
    else if (word == "-CHANMODES")
        listModes = usual.listModes, parameterModes = usual.parameterModes,
        setParameterModes = usual.setParameterModes;
}

// "$,ajrxz", "~,acjnqrtfm" or, without a sign, ",ACNORSTUcmprz". With a sign, "a" is an account;
// without, "R" is. The servers with a dollar use +S for something else than codes.
void IrcFeatures::readExtendedMasks(std::string_view value) {
    const auto [sign, kinds, isWhole] = partedAt(value, ',');
    if (!isWhole)
        return;
    maskSign_ = sign;
    codelessModes = maskSign_ == "$" ? "c" : "cS";
    if (!isAccountKindTold_) {
        const char kind = maskSign_.empty() ? 'R' : 'a';
        accountKind_ = std::string(kinds.find(kind) == kinds.npos ? 0 : 1, kind);
    }
    makeAccountMask();
}

// "a,account": the ways to write it, after the sign of the other word.
void IrcFeatures::readAccountKinds(std::string_view names) {
    isAccountKindTold_ = true;
    accountKind_ = partedAt(names, ',').head;
    makeAccountMask();
}

// Either word may come first.
void IrcFeatures::makeAccountMask() {
    accountMask = accountKind_.empty() ? "" : maskSign_ + accountKind_ + ':';
}

bool IrcFeatures::isChannel(std::string_view name) const {
    return !name.empty() && channelTypes.find(name.front()) != std::string::npos;
}

bool IrcFeatures::isRankedChannel(std::string_view name) const {
    return !name.empty() && channelRankSigns.find(name.front()) != std::string::npos &&
           isChannel(name.substr(1));
}

} // namespace larkspin
