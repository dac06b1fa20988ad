// One of the networks: its connection, its rooms and talks, and what is kept of it.
#pragma once

#include "irc/client/irc_access.h"
#include "irc/client/irc_accounts.h"
#include "irc/client/irc_client.h"

#include <memory>
#include <string>
#include <utility>

namespace larkspin {

struct IrcNetwork {
    // What all networks share; all must live on.
    struct Shared {
        EventLoop& loop;
        ChatLines& lines;
        Conversations& conversations;
        PasswordPrompt& prompt;
        Files& disk;
        RoomDisplay shown;
        IrcIgnoreList* ignored = nullptr; // those whom he ignores on all of them, if they are kept
    };

    IrcNetwork(const Shared& shared, std::unique_ptr<IrcConnection> link, IrcAccountFile& kept,
               IrcOnConnect::Words words)
        : connection(std::move(link)), file(kept),
          client(shared.loop, shared.lines, shared.conversations, *connection, shown(shared)),
          access(shared.loop, client, shared.prompt, kept, shared.disk, shared.shown.tell,
                 std::move(words)) {
        if (shared.ignored)
            client.ignoreAlso(*shared.ignored);
    }

    std::unique_ptr<IrcConnection> connection;
    IrcAccountFile& file;
    IrcClient client;
    IrcAccess access;

    const std::string& name() const { return file.account().network(); }
    bool isKnown() const { return !file.account().server.host.empty(); } // it has a server

    // What the next run takes up follows what the server has agreed to. `follow` writes it.
    void follow();

private:
    RoomDisplay shown(const Shared& shared);

    bool wasOn_ = false;
};

} // namespace larkspin
