// What is kept of single servers: how the owner comes to them, and what he trusts them by.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct IrcServer;

// The first four are a host's, whatever the port; the password and the fingerprint (of the
// certificate that the owner trusts) are those of a host and a port.
enum class IrcFact { user, realName, certificate, onConnect, tls, password, fingerprint };

class IrcServerFacts {
public:
    static constexpr std::size_t most = 300, longestValue = 500; // facts; bytes

    // Where a fact is kept. A blank place is that of the next server that is connected to.
    static std::string placeOf(IrcFact what, const IrcServer& server);

    // Blank where there is none; of several, the first one.
    std::string get(IrcFact what, std::string_view where) const;
    std::vector<std::string> all(IrcFact what, std::string_view where) const;

    // In place of those that there are; a blank value is none. Adding is for facts of which there
    // are several. One that isn't kept is for this run only. False if there are too many.
    bool set(IrcFact what, std::string_view where, std::string_view value, bool isKept = true);
    bool add(IrcFact what, std::string_view where, std::string_view value, bool isKept = true);
    void remove(IrcFact what, std::string_view where, std::size_t number); // from 0

    // What was given for the next server becomes this one's.
    void adopt(const IrcServer& server);

    // For a file that couldn't be read before: takes each of the others of which there is none.
    void addWhatIsLacking(const IrcServerFacts& others);

    // As a file has them: "what of where=value". A line that makes no sense, or isn't about a
    // server, changes nothing; false then.
    bool takeLine(std::string_view key, std::string_view value);
    std::string lines() const;

    bool operator==(const IrcServerFacts&) const = default;

private:
    struct Fact {
        IrcFact what;
        std::string where, value;
        bool isKept;

        bool isAbout(IrcFact about, std::string_view place) const;
        bool operator==(const Fact&) const = default;
    };

    std::vector<Fact> facts_;
};

} // namespace larkspin
