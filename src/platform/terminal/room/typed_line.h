// The line in which the owner types what he says, as on the desktop: with the lines typed last on
// the arrows up and down, the keys that shells have, and completion on Tab. Several lines pasted at
// once are said only after he has been asked. One row of the screen, and what it offers above that.
#pragma once

#include "host/half_typed.h"
#include "host/line_history.h"
#include "library/completion.h"
#include "platform/terminal/room/typed_offers.h"
#include "platform/terminal/screen/edited_text.h"
#include "platform/terminal/screen/layers.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class TypedLine {
public:
    // The history must live on.
    explicit TypedLine(LineHistory& history)
        : history_(history), offers_([this](const auto& choice) { take(choice); },
                                     [this](auto lines) { say(std::move(lines)); }) {}

    // The task gets each finished line, while the key that ended it is being handled.
    void onLine(std::function<void(std::string line)> typed) { onLine_ = std::move(typed); }

    // The task is called as the owner begins to type a line.
    void onBegin(std::function<void()> begins) { onBegin_ = std::move(begins); }

    // What Tab makes of the text in front of the cursor.
    using Complete = std::function<Completion(std::string_view typed)>;
    void onTab(Complete complete) { complete_ = std::move(complete); }

    // The task is called when nothing can be made of a key.
    void onRefusal(std::function<void()> refuses) { refuses_ = std::move(refuses); }

    // On one row, after a prompt such as the owner's name. Gives where the cursor stands.
    Cursor draw(Cells& cells, const Area& row, std::string_view prompt, const CellStyle& style);
    // What the line offers, at the foot of an area above it, if it offers anything.
    void drawOffers(Cells& cells, const Area& above, const TypedOffers::Looks& looks) {
        offers_.draw(cells, above, looks);
    }

    // Whether it makes anything of the stroke. Page keys, Tab in an empty line and what has no use
    // here are left to others, and so is the mouse, but on what is offered.
    bool take(const Stroke& stroke);

    void empty();

    // What has been typed so far; its cursor counts characters.
    Draft draft() const;
    void put(const Draft& draft);

    // While a secret is typed, or may be.
    bool hides() const { return secret_ || isHeld_; }

    // The next typed line is neither shown nor kept, but given to the task. It is empty when the
    // owner leaves it so, or strikes Escape.
    using Secret = std::function<void(std::string line)>;
    void takeSecret(Secret secret);
    void dropSecret();

    // How a typed line comes back: secrets are masked.
    void maskBy(std::function<std::string(const std::string& line)> masked) {
        masked_ = std::move(masked);
    }

    // After a line for which this is true, nothing is shown or handed on until `goOn`, since it may
    // be a secret.
    void holdAfter(std::function<bool(const std::string& line)> line) {
        holdsAfter_ = std::move(line);
    }
    void goOn();

    // Whether the owner has begun to type something, or has something to answer here.
    bool isBegun() const { return !text_.isEmpty() || hides() || offers_.isAsking(); }

private:
    bool takeKey(const KeyStroke& key);
    bool takeSecretKey(const KeyStroke& key);
    bool edit(const KeyStroke& key);
    bool giveUp();
    void takePaste(std::string_view pasted);
    void askAbout(PastedLines pasted);
    void say(std::vector<std::string> lines);
    void insert(std::u32string_view characters);
    void endSecret(std::string line);
    void endLine();
    void handOn(std::string line);
    bool recall(int way);
    void complete();
    void narrow();
    void take(const Completion::Choice& choice);
    bool replace(std::size_t characters, const std::string& text);
    Completion completion() const;
    void noteBegin();

    LineHistory& history_;
    EditedText text_{LineHistory::mostCharacters};
    std::size_t shownFrom_ = 0; // the character that stands first on the row
    std::function<void(std::string)> onLine_ = [](const std::string&) {};
    std::function<void()> onBegin_ = [] {}, refuses_ = [] {};
    bool isBegun_ = false;
    Complete complete_ = [](std::string_view) { return Completion{}; };
    std::function<std::string(const std::string&)> masked_ = [](const std::string& line) {
        return line;
    };
    std::function<bool(const std::string&)> holdsAfter_ = [](const std::string&) { return false; };
    Secret secret_;                 // set while one is asked for
    bool isHeld_ = false;           // a secret may be typed before it is asked for
    bool isSecretComplete_ = false; // and has been ended with Return
    int back_ = 0;                  // how many lines of the history back the line is
    std::string begunText_;         // what stood there before the owner went back
    std::size_t replaced_ = 0;      // characters in front of the cursor, by a choice that is taken
    TypedOffers offers_;
};

} // namespace larkspin
