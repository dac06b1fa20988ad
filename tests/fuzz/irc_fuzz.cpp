// Any bytes from a server: lines don't depend on how they arrive, what was read is written and read
// the same, people are listed once each, and nothing that is sent holds more than a line.
#include "fuzz/fuzz.h"
#include "irc/channels/irc_channel.h"
#include "irc/connection/irc_connection.h"
#include "irc/connection/irc_registration.h"
#include "irc/protocol/irc_input.h"
#include "irc/protocol/irc_message.h"

#include <set>

using namespace larkspin;

static void sendsOneLine(const std::string& line) {
    demand(line.size() > 2 && line.size() <= 512);
    demand(line.find_first_of(std::string_view("\r\n\0", 3)) == line.size() - 2);
}

static void readsBack(const IrcMessage& message) {
    const std::string line = ircLine(message.command, message.parameters);
    if (line.empty())
        return;
    sendsOneLine(line);
    const auto again = readIrcMessage(std::string_view(line).substr(0, line.size() - 2));
    const bool mayBeCut = line.size() > 508; // by as much as a character has
    demand(again && again->parameters.size() <= 15);
    demand(mayBeCut || ircLine(again->command, again->parameters) == line);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    IrcRegistration registration(
        {.nick = input.ConsumeRandomLengthString(9), .account = "a", .password = "b"}, IrcServer{},
        sendsOneLine, [](const std::string&) {});
    std::vector<std::string> lines, inPieces;
    IrcInput pieces, whole;
    std::string bytes;
    while (input.remaining_bytes() > 0) {
        std::string piece = input.PickValueInArray(
            {"\n", ":a JOIN #c\n", ":a NICK ", ":A!b@c QUIT\n", "PART #c\n", "MODE #c +b-o ",
             "353 a = #c :@+a b ", "367 a #c a!", "005 a PREFIX=(ov)@+ CHANMODES=b,k,l :x\n",
             "CAP * LS :sasl=PLAIN,SCRAM-SHA-256 sts=port=1\n", "CAP * ACK :sasl\n",
             "AUTHENTICATE +\n", "433 * a\n"});
        piece += input.ConsumeRandomLengthString(30);
        bytes += piece;
        pieces.add(piece, [&](std::string_view line) { inPieces.emplace_back(line); });
    }
    whole.add(bytes, [&](std::string_view line) { lines.emplace_back(line); });
    demand(lines == inPieces);

    IrcFeatures features;
    IrcChannel channel("#c");
    for (const std::string& line : lines) {
        const auto message = readIrcMessage(line);
        if (!message)
            continue;
        readsBack(*message);
        if (message->command == "005")
            features.read(*message);
        channel.take(*message, features);
        registration.take(*message);
    }
    std::set<std::string> names;
    for (int row = 0; row < channel.people().count(); ++row)
        demand(names.insert(features.fold(channel.people().row(row))).second);
    return 0;
}
