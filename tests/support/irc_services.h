// What keeps a network's accounts, beside an InspIRCd (irc_server.h): it links as a server does,
// and lets in whoever sends the right login by SASL PLAIN.
#pragma once

#include "support/irc_person.h"
#include "text/typed_words.h"

#include <atomic>
#include <chrono>
#include <ctime>
#include <optional>
#include <thread>
#include <vector>

namespace larkspin {

class IrcServices {
public:
    // The login is in base64, as it is sent. Once made, people can log in to that account.
    IrcServices(std::string account, std::string login)
        : account_(std::move(account)), login_(std::move(login)) {
        // A server that has just begun may let in nobody yet.
        for (int tries = 0; tries < 50 && !isTaken(); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        IrcSocket& link = *link_;
        link.send("SERVER services.test sesame 0 2SV :accounts");
        EXPECT_NE(link.hears("SERVER irc.test"), "");
        link.send(":2SV BURST " + std::to_string(std::time(nullptr)) +
                  "\r\n:2SV METADATA * saslmechlist :PLAIN\r\n:2SV ENDBURST");
        EXPECT_NE(link.hears(" ENDBURST"), "");
        serving_ = std::thread([this] {
            while (!isOver_)
                answer(link_->hears(" ENCAP 2SV SASL ", std::chrono::milliseconds(50)));
        });
    }
    ~IrcServices() {
        isOver_ = true;
        serving_.join();
    }

private:
    bool isTaken() {
        link_.emplace(LocalIrcServer::servicesPort);
        link_->send("CAPAB START 1205\r\nCAPAB END");
        return !link_->hears("CAPAB END").empty();
    }

    // ":0IR ENCAP 2SV SASL PERSON SERVICES KIND TEXT"
    void answer(std::string_view line) {
        std::vector<std::string> words;
        for (std::string_view word; !(word = takeWord(line)).empty();)
            words.emplace_back(word);
        if (words.size() < 8)
            return;
        const std::string person = words[4], kind = words[6];
        const std::string answer = ":2SV ENCAP 0IR SASL 2SVAAAAAA " + person;
        const bool isRight = kind == "C" && words[7] == login_;
        if (kind == "S")
            link_->send(answer + " C +");
        if (isRight)
            link_->send(":2SV METADATA " + person + " accountname :" + account_);
        if (kind == "C")
            link_->send(answer + (isRight ? " D S" : " D F"));
    }

    const std::string account_, login_;
    std::optional<IrcSocket> link_;
    std::atomic<bool> isOver_ = false;
    std::thread serving_;
};

} // namespace larkspin
