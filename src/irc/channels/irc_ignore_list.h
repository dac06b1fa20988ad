// Whom the owner ignores on all networks, by masks ("ann", "*!*@spam.example"), kept in a file.
// Those whom he ignores by name in a room, for this run, are the moderation's.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class KeptFiles;
struct IrcFeatures;

class IrcIgnoreList {
public:
    IrcIgnoreList(KeptFiles& files, std::string path);

    static constexpr std::size_t most = 300, longest = 200; // masks; bytes

    const std::vector<std::string>& masks() const { return masks_; }

    // A mask as it is kept, "NICK!USER@HOST" with stars for what isn't told; blank for what makes
    // none.
    static std::string maskOf(std::string_view given);

    // These write the file. False, and nothing changes: there are too many, or it isn't there.
    bool add(const std::string& mask);
    bool remove(std::string_view mask);

    // The first mask that fits "nick!user@host"; null if there is none.
    const std::string* find(std::string_view who, const IrcFeatures& features) const;

private:
    std::vector<std::string> read();
    void keep();

    KeptFiles& files_;
    std::string path_;
    bool isRead_ = false;
    std::vector<std::string> masks_;
};

} // namespace larkspin
