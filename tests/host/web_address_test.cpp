#include "host/web_address.h"

#include <gtest/gtest.h>
#include <sstream>

namespace larkspin {
namespace {

TEST(WebAddress, IsMadeWhole) {
    const std::pair<const char*, const char*> cases[] = {
        {"lark.example", "http://lark.example"},
        {"b\u00FCcher.de/x", "http://b\u00FCcher.de/x"},
        {"www.Lark-2.example:8080/a?b", "http://www.Lark-2.example:8080/a?b"},
        {"  HTTP://Lark.example/a.exe ", "http://Lark.example/a.exe"},
        {"MailTo:Jo@a.b,mum@a.b?cc=x@y", "mailto:Jo@a.b,mum@a.b?cc=x@y"},
    };
    for (const auto& [text, address] : cases)
        EXPECT_EQ(webAddress(text), address);
    for (const char* text :
         {"https://me:it@a.b:80/%20?q='x'&y=[1];2#top", "ftp://10.0.0.1/", "http://[::1]:80",
          "http://b\u00FCcher.de/K\u00F6ln", "mailto:a@b?Subject=%20&body=%0Ab&bcc=c@d"})
        EXPECT_EQ(webAddress(text), text);
}

TEST(WebAddress, IsNothingElse) {
    std::istringstream words(
        "word word:80 a..b .a.b a.b. -a.b a.b- a.b: a.b:x a.b:123456 a_b.c jo@a.b a.b/\x7F "
        "a.b/\u0085 a.b/\u00A0 a.b/\u202Ex a.b/\uF03A a.b/\xFF c:\\x.exe c:/x.exe \\\\a.b\\c "
        "/etc/passwd ~/x.y ../a.b file:///etc/passwd javascript:alert(1) data:text/html,x http:/a.b "
        "http:// http:///etc http://jo@ http://-a.b http://a.b\\c http://a.b/\"x http://a.b/`x` "
        "http\u017F://a.b mailto: mailto:jo mailto:jo@ mailto:-jo@a.b mailto:?subject=x "
        "mailto:jo@a.b?attach=/x mailto:jo@a.b?subject=x&Attachment=/x mailto:jo@a.b?%61ttach=/x "
        "mailto:jo@a.b&attach=/x mailto:jo@a.b#?attach=/x mailto:jo@a.b?subject=x?attach=/x "
        "mailto:jo@a.b?subject=x%0AAttach:%20/x mailto:jo@a.b%0d?subject=x "
        "mailto:jo@a.b?\u017Fubject=x");
    for (std::string text; words >> text;)
        EXPECT_EQ(webAddress(text), std::nullopt) << text;
    for (const char* text : {"", "a.b/ c", "a.b/\nc", "http ://a.b"})
        EXPECT_EQ(webAddress(text), std::nullopt) << text;
}

} // namespace
} // namespace larkspin
