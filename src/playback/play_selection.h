// Choosing a song by chat: by a part of its name, by its number, or at random.
#pragma once

#include <string>

namespace larkspin {

struct AppState;
class RandomPick;
class Reply;
class Scanner;
class Transport;

class PlaySelection {
public:
    PlaySelection(AppState& state, Reply& reply, Transport& transport, RandomPick& randomPick,
                  Scanner& NiteScan2)
        : state_(state), reply_(reply), transport_(transport), randomPick_(randomPick),
          NiteScan2_(NiteScan2) {}

    // The commands.
    void play(const std::string& text);
    void num(const std::string& number);
    void rnd();
    void rnd(const std::string& text);

    // Starts a random row of the whole playlist.
    void randp3();

    // Ends what shows of a selection: the choice list and the stop window.
    void closeselection();

private:
    void playOnlyHit(const std::string& text);
    void askForChoice();
    void placeBehindRandomHit(const std::string& text, int picked);
    std::string marked(const std::string& name, const std::string& text) const;

    AppState& state_;
    Reply& reply_;
    Transport& transport_;
    RandomPick& randomPick_;
    Scanner& NiteScan2_;
};

} // namespace larkspin
