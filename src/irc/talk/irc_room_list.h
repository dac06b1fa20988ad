// The list of a network's rooms that the owner has asked for (LIST): the largest ones are told, the
// rest is counted. A network may have tens of thousands.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace larkspin {

struct IrcFeatures;
struct IrcMessage;

class IrcRoomList {
public:
    static constexpr std::size_t most = 100; // that are told

    // Begins anew. A pattern without wildcards fits whatever holds it; a blank one fits all.
    void begin(const std::string& pattern, int leastPeople);
    bool isComing() const { return isComing_; }
    void end() { isComing_ = false; }

    // What the server is asked for so: it leaves out what it can.
    std::vector<std::string> parameters(const IrcFeatures& features) const;

    // A room. The others, with the list's end, give the lines to tell.
    void add(const IrcMessage& room, const IrcFeatures& features);
    std::vector<std::string> lines();

private:
    struct Room {
        std::string name, topic;
        int people;
    };
    void keepLargest();

    std::string pattern_;
    int least_ = 0;
    bool isComing_ = false;
    std::size_t found_ = 0;
    std::vector<Room> rooms_;
};

} // namespace larkspin
