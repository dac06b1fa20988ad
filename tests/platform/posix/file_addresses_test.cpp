#include "platform/posix/file_addresses.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace larkspin {

TEST(FileAddresses, NameWhatIsTypedAndTheSameFileAgain) {
    const std::string none = "none";
    const struct {
        std::string typed, address, path;
    } cases[] = {
        {"a b.mp3", "file:///home/jo/a%20b.mp3", "/home/jo/a b.mp3"},
        {"/m/Who?#%41\xFF.mp3", "file:///m/Who%3F%23%2541%FF.mp3", "/m/Who?#%41\xFF.mp3"},
        {"-", "file:///home/jo/-", "/home/jo/-"},
        {"../x", "file:///home/jo/../x", "/home/jo/../x"},
        {"c:\\home\\Who Made Who?", "file:///home/Who%20Made%20Who%3F", "/home/Who Made Who?"},
        {"file:///a%20b", "file:///a%20b", "/a b"},
        {"FILE://LocalHost/a%2", "FILE://LocalHost/a%2", "/a%2"},
        {"file:/a\xFF", "file:/a%FF", "/a\xFF"},
        {"file://elsewhere.example/a", "file://elsewhere.example/a", none},
        {"file:///a%00b", "file:///a%00b", none},
        {"file:a", "file:a", none},
        {"", "file:", none},
        {"https://x.org/a b?c=%20", "https://x.org/a%20b?c=%20", none},
        {"a://b", "a://b", none},
        {"1://b", "file:///home/jo/1%3A//b", "/home/jo/1://b"},
    };
    for (const auto& [typed, address, path] : cases) {
        EXPECT_EQ(addressOfTyped(typed, "/home/jo"), address);
        EXPECT_EQ(pathOfAddress(address).value_or(none), path) << address;
    }
    EXPECT_EQ(addressOfTyped("a", ""), "file:a") << "from a directory that has gone";
}

TEST(FileAddresses, KnowTheOwnMachineByName) {
    char name[256] = {};
    ASSERT_EQ(::gethostname(name, sizeof name - 1), 0);
    EXPECT_EQ(pathOfAddress("file://" + std::string(name) + "/a"), "/a");
}

} // namespace larkspin
