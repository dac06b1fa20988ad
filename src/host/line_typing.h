// What comes of what the owner types in a line: he says it; the lines typed last come back on the
// arrows up and down, and Tab completes it; a secret is neither shown nor kept; several lines that
// he pastes at once are said only after he has been asked.
#pragma once

#include "host/line_offers.h"
#include "library/completion.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class LineHistory;

// What has been typed so far.
struct Draft {
    static constexpr std::size_t atEnd = std::string::npos;

    std::string text = {};
    std::size_t cursor = 0; // as the field in which it is typed counts, or `atEnd`
};

// The field in which he types, as a front end has it.
class TypedField {
public:
    virtual ~TypedField() = default;

    virtual Draft typed() const = 0;
    virtual std::string beforeCursor() const = 0;

    virtual void become(const Draft& draft) = 0;
    virtual void becomeEmpty() = 0; // he may be able to take that back
    virtual void forget() = 0;      // what he could bring back into the field

    // In place of so many characters before the cursor. False, and nothing done, without room.
    virtual bool replaceBefore(std::size_t characters, const std::string& text) = 0;
};

class LineTyping {
public:
    // Both must outlive it.
    LineTyping(TypedField& field, LineHistory& history);
    LineTyping(const LineTyping&) = delete;
    LineTyping& operator=(const LineTyping&) = delete;

    // The task gets each finished line, while the key that ended it is being handled.
    void onLine(std::function<void(std::string line)> typed) { onLine_ = std::move(typed); }

    // The task is called as the owner begins to type a line.
    void onBegin(std::function<void()> begins) { onBegin_ = std::move(begins); }

    // What Tab makes of the text in front of the cursor.
    using Complete = std::function<Completion(std::string_view typed)>;
    void onTab(Complete complete) { complete_ = std::move(complete); }

    // The task is called when nothing can be made of a key.
    void onRefusal(std::function<void()> refuses) { onRefusal_ = std::move(refuses); }

    // The task is told when it begins, or ceases, to hide what is typed.
    void onHide(std::function<void(bool hides)> hide) { onHide_ = std::move(hide); }

    void empty();

    // What has been typed so far, to be put back later, when the owner has been somewhere else
    // meanwhile. A secret isn't told and isn't replaced.
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
    bool isBegun() const;

    // The rest is the field's to call. Whether the key has been dealt with; if it hasn't, it is the
    // field's own. Tab in an empty line and page keys are left to others.
    bool take(LineKey key);

    // Whether a paste, with which the text would be this, is of several lines. He is asked about
    // them then, and the field is to be as it was.
    bool asksAbout(std::string_view text);

    // After any change of the text; and after one by the owner's hand, which the choices follow.
    void noteBegin();
    void narrow();

    void refuse() { onRefusal_(); }

private:
    bool takeSecretKey(LineKey key);
    void say(std::vector<std::string> lines);
    void endSecret(std::string line);
    void endLine();
    void handOn(std::string line);
    void recall(int way);
    void complete();
    void offer(Completion found);
    void take(const Completion::Choice& choice);

    TypedField& field_;
    LineHistory& history_;
    std::function<void(std::string)> onLine_ = [](const std::string&) {};
    std::function<void()> onBegin_ = [] {}, onRefusal_ = [] {};
    std::function<void(bool)> onHide_ = [](bool) {};
    Complete complete_ = [](std::string_view) { return Completion{}; };
    std::function<std::string(const std::string&)> masked_ = [](const std::string& line) {
        return line;
    };
    std::function<bool(const std::string&)> holdsAfter_ = [](const std::string&) { return false; };
    bool isBegun_ = false;          // as the owner has been noted to have begun
    Secret secret_;                 // set while one is asked for
    bool isHeld_ = false;           // a secret may be typed before it is asked for
    bool isSecretComplete_ = false; // and has been ended with Return
    int back_ = 0;                  // how many lines of the history back the line is
    std::string begunText_;         // what stood there before the owner went back
    std::size_t replaced_ = 0;      // characters in front of the cursor, by a choice that is taken

public:
    LineOffers offers;
};

} // namespace larkspin
