// Which parts of a line are never kept or shown again.
#include "host/typed_secrets.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

// "hush" is what must not be read; where there is none, all of the line can be.
std::string masked(std::string line) {
    if (const auto secret = line.find("hush"); secret != std::string::npos)
        line = line.substr(0, secret) + std::string(secretMask);
    return line;
}

TEST(TypedSecrets, AreMaskedInWhateverWordTheyAreTyped) {
    for (const char* const line : {"/msg NickServ identify hush",
                                   "/MSG nickserv IDENTIFY hush hush",
                                   " /msg NickServ id hush",
                                   "/query NickServ identify  hush",
                                   "/m ChanServ identify #den hush",
                                   "/notice AuthServ auth hush",
                                   "/msg Q@CServe.quakenet.org AUTH hush hush",
                                   "/msg X login hush hush",
                                   "/msg NickServ ghost ann hush",
                                   "/msg NickServ ghost ann",
                                   "/msg NickServ set password hush",
                                   "/msg NickServ register hush jo@lark.example",
                                   "/msg NickServ info ann",
                                   "/msg ChanServ op #den ann",
                                   "/msg *controlpanel setpass hush",
                                   "/msg ann identify yourself",
                                   "/msg ann my pass is 1",
                                   "/mgs NickServ identify hush",
                                   "/msg NickServ identifiy hush",
                                   "/msg NickServ /identify hush",
                                   "/msg NickServ enforce ann hush",
                                   "/msg ChanServ set #den mlock +ntk hush",
                                   "/msg ChanServ mode #den lock add +k hush",
                                   "/msg ChanServ invite #den",
                                   "/msg *sasl set hush hush",
                                   "/znc *nickserv set hush",
                                   "/msg *status addserver irc.example +6697 hush",
                                   "/msg *status loadmod nickserv hush",
                                   "/msg *perform add PRIVMSG NickServ :identify hush",
                                   "/msg BouncerServ network create -pass hush",
                                   "/ns identify hush",
                                   "/nickserv identify hush",
                                   "/cs identify #den hush",
                                   "/identify hush",
                                   "/oper jo hush",
                                   "/join #den hush",
                                   "/j #den  hush",
                                   "/JOIN #den",
                                   "/login jo hush",
                                   "/login jo keep",
                                   "/q NickServ identify hush",
                                   "/pass hush",
                                   "/pass keep",
                                   "/pass none",
                                   "/mode #den +k hush",
                                   "/mode +ok hush ann",
                                   "/mode #den +l 5",
                                   "/mode +i",
                                   "/mode #den",
                                   "/quote PASS hush",
                                   "/quote :jo pass hush",
                                   "/raw OPER jo hush",
                                   "/quote VHOST jo hush",
                                   "/quote AUTHENTICATE hush",
                                   "/quote NS identify hush",
                                   "/quote NickServ :identify hush",
                                   "/quote PRIVMSG NickServ :identify hush",
                                   "/quote PRIVMSG #den :identify yourself",
                                   "/quote JOIN #a,#b hush,hush",
                                   "/quote MODE #den +k hush",
                                   "/quote WHOIS ann",
                                   "/onconnect /msg NickServ identify hush",
                                   "/onconnect OPER jo hush",
                                   "/onconnect drop 2",
                                   "/now /msg NickServ identify hush",
                                   "/now 'play identify",
                                   "/connect irc.example 6697 hush",
                                   "/connect plain irc.example 6667 hush",
                                   "/connect irc.example jo #den",
                                   "/connect",
                                   "/server irc.example +6697 hush",
                                   "/server add home irc.example -tls -password=hush",
                                   "/set irc.server.home.sasl_password hush",
                                   "/set volume 5",
                                   "'play identify x",
                                   "identify x",
                                   "/",
                                   "/msg",
                                   "/msg NickServ",
                                   "/msg NickServ identify"})
        EXPECT_EQ(typedWithoutSecrets(line), masked(line));
}

TEST(TypedSecrets, AreMaskedInWhatServicesAreTold) {
    for (const char* const text : {"identify hush", "set password hush", "help identify x"}) {
        EXPECT_EQ(saidWithoutSecrets("ann", text), text);
        EXPECT_EQ(saidWithoutSecrets("NickServ", text), masked(text));
    }
}

} // namespace
} // namespace larkspin
