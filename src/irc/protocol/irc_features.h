// How a server compares names, and which names and ranks it knows (ISUPPORT).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct IrcMessage;

enum class CaseMapping { ascii, rfc1459, rfc1459Strict };

// Two names are the same if this makes them the same. Only ASCII is folded, as servers do.
std::string foldIrcName(std::string_view name, CaseMapping mapping);

struct IrcFeatures {
    CaseMapping caseMapping = CaseMapping::rfc1459;
    std::string channelTypes = "#&";

    // The ranks of people in a channel, the highest one first: their mode letters and signs.
    std::string rankModes = "ov", rankSigns = "@+";

    // The signs that may stand in front of a channel, for those in it who have that rank.
    std::string channelRankSigns = {};

    // Which of a channel's other modes have a parameter: always (lists, such as bans; others), or
    // only when they are set.
    std::string listModes = "beI", parameterModes = "k", setParameterModes = "l";

    // The modes without a parameter by which a channel refuses the codes for how text looks, or
    // takes them out. A large S has another meaning on some servers.
    std::string codelessModes = "c";

    // How many modes with a parameter one line may change.
    std::size_t modesInLine = 3;

    // What stands in front of an account's name in a mask that is about that account; blank if the
    // server knows no such masks.
    std::string accountMask = {};

    // Whether it tells of somebody's account in its answer to WHO (WHOX).
    bool tellsAccounts = false;

    std::size_t mostHistory = 0; // lines that it tells at once; 0 for no bound
    // By what else than names a list of rooms can be asked for (ELIST): M for a mask, U for how
    // many people there are.
    std::string listFilters = {};

    bool hasMonitor = false; // it tells when a name comes or goes

    // Takes the words of an ISUPPORT message, also those that take back what was told before
    // ("-PREFIX"). The first word about how names compare holds for the whole connection, since
    // lists of names are already kept by it.
    void read(const IrcMessage& message);

    bool isChannel(std::string_view name) const;
    bool isRankedChannel(std::string_view name) const;
    std::string fold(std::string_view name) const { return foldIrcName(name, caseMapping); }

private:
    void readWord(std::string_view word);

    void readExtendedMasks(std::string_view value);
    void readAccountKinds(std::string_view names);
    void makeAccountMask();

    bool isMappingTold_ = false;
    std::string maskSign_; // in front of masks that are about something else than names and hosts
    std::string accountKind_; // what stands after it in those about an account
    bool isAccountKindTold_ = false;
};

} // namespace larkspin
