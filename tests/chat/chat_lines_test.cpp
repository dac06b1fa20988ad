#include "chat/chat_lines.h"

#include "support/virtual_loop.h"

#include <gtest/gtest.h>

namespace larkspin {

// A connection brings several lines of several rooms in one event.
TEST(ChatLines, BindWhatIsSaidOfEachToItsPlace) {
    VirtualLoop loop;
    ChatLines lines(loop);
    std::string places; // where an answer to each may be said
    lines.connect([&](const ChatLine&) {
        for (const char* place : {"here", "there"})
            places += lines.mayBeSaidAt(place) ? place : "-";
    });
    loop.post([&] {
        for (const char* place : {"here", "there"})
            lines.heard({"Owner", "'stop"}, place);
        EXPECT_TRUE(lines.mayBeSaidAt("elsewhere")) << "what is about neither";
        EXPECT_FALSE(lines.mayBeSaidAt("here")) << "it has spoken elsewhere first";
    });
    loop.serveTurn();
    EXPECT_EQ(places, "here--there");
}

} // namespace larkspin
