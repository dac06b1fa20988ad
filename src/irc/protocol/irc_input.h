// The bytes of a connection as the lines that they hold.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcInput {
public:
    // A line's tags and the line itself, by IRCv3. What is longer isn't a line: it is dropped, up
    // to its end, however long it is.
    static constexpr std::size_t longestLine = 8191 + 512;

    // Calls back with each line that has come whole, without its end. Empty lines aren't told.
    void add(std::string_view bytes, const std::function<void(std::string_view line)>& take);

    // For a new connection.
    void clear();

private:
    using Take = std::function<void(std::string_view line)>;

    void keep(std::string_view part);
    void finish(const Take& take);

    std::string begun_;
    bool tooLong_ = false;
};

} // namespace larkspin
