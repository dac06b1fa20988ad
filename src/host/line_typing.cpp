#include "host/line_typing.h"

#include "host/line_history.h"

#include <algorithm>
#include <utility>

namespace larkspin {

LineTyping::LineTyping(TypedField& field, LineHistory& history)
    : field_(field), history_(history), offers([this](const auto& choice) { take(choice); },
                                               [this](auto lines) { say(std::move(lines)); }) {}

void LineTyping::noteBegin() {
    const bool begins = !field_.typed().text.empty();
    if (!std::exchange(isBegun_, begins) && begins)
        onBegin_();
}

bool LineTyping::isBegun() const {
    return hides() || offers.isAsking() || !field_.typed().text.empty();
}

void LineTyping::empty() {
    back_ = 0;
    offers.close();
    field_.becomeEmpty();
    noteBegin();
}

Draft LineTyping::draft() const {
    return hides() ? Draft() : field_.typed();
}

// Empty in between, so that the line counts as begun anew.
void LineTyping::put(const Draft& draft) {
    if (hides())
        return;
    empty();
    field_.become(draft);
    noteBegin();
}

void LineTyping::takeSecret(Secret secret) {
    // The text typed while the line was held may be the secret already.
    if (!isHeld_)
        dropSecret();
    offers.close();
    secret_ = std::move(secret);
    isHeld_ = false;
    onHide_(true);
    if (std::exchange(isSecretComplete_, false))
        endSecret(field_.typed().text);
}

void LineTyping::dropSecret() {
    const bool wasHidden = hides();
    secret_ = nullptr;
    isHeld_ = isSecretComplete_ = false;
    back_ = 0;
    field_.become({});
    if (wasHidden) {
        field_.forget();
        onHide_(false);
    }
    noteBegin();
}

void LineTyping::goOn() {
    if (isHeld_)
        dropSecret();
}

void LineTyping::endSecret(std::string line) {
    const Secret secret = secret_;
    dropSecret();
    secret(std::move(line));
}

bool LineTyping::take(LineKey key) {
    if (hides() && takeSecretKey(key))
        return true;
    if (offers.take(key))
        return true;
    switch (key) {
    case LineKey::enter:
        endLine();
        return true;
    case LineKey::up:
    case LineKey::down:
        recall(key == LineKey::up ? 1 : -1);
        return true;
    case LineKey::tab:
        if (field_.typed().text.empty())
            return false;
        complete();
        return true;
    default:
        return false;
    }
}

bool LineTyping::takeSecretKey(LineKey key) {
    const bool ends = key == LineKey::enter;
    if (secret_ && (ends || key == LineKey::escape))
        endSecret(ends ? field_.typed().text : "");
    else if (ends)
        isSecretComplete_ = true; // `takeSecret` hands it on
    else
        return isSecretComplete_ || key == LineKey::escape || key == LineKey::up ||
               key == LineKey::down || key == LineKey::tab;
    return true;
}

// What follows a line that asks for a password may be that password, which isn't shown.
bool LineTyping::asksAbout(std::string_view text) {
    PastedLines pasted = pastedLines(text, LineHistory::mostCharacters);
    if (hides() || pasted.lines.size() < 2)
        return false;
    const auto asks = std::ranges::find_if(pasted.lines, holdsAfter_);
    if (asks != pasted.lines.end())
        pasted.lines.erase(asks + 1, pasted.lines.end());
    if (!isBegun_)
        onBegin_();
    offers.ask(std::move(pasted));
    return true;
}

void LineTyping::say(std::vector<std::string> lines) {
    empty();
    for (std::string& line : lines)
        handOn(std::move(line));
}

void LineTyping::endLine() {
    std::string line = field_.typed().text;
    if (line.empty())
        return;
    empty();
    handOn(std::move(line));
}

void LineTyping::handOn(std::string line) {
    const std::string shown = masked_(line);
    history_.add(shown);
    if (shown != line)
        field_.forget();
    // The owner may type the secret right after this line, before anybody has asked for it.
    isHeld_ = holdsAfter_(line);
    if (isHeld_)
        onHide_(true);
    onLine_(std::move(line));
}

// The line that was begun comes back when the owner returns from the history.
void LineTyping::recall(int way) {
    const auto& lines = history_.lines();
    const int wanted = back_ + way;
    if (wanted < 0 || wanted > static_cast<int>(lines.size()))
        return;
    if (back_ == 0)
        begunText_ = field_.typed().text;
    back_ = wanted;
    offers.close();
    field_.become({back_ == 0 ? begunText_ : *(lines.end() - back_), Draft::atEnd});
    noteBegin();
}

// What is still open after what is certain has been added stands above the line.
void LineTyping::complete() {
    Completion found = complete_(field_.beforeCursor());
    if (found.text.empty() || !field_.replaceBefore(found.replaced, found.text)) {
        refuse();
        return offers.close();
    }
    if (!found.addsNothing && found.choices.size() > 1)
        found = complete_(field_.beforeCursor());
    if (found.choices.size() < 2)
        return offers.close();
    offer(std::move(found));
}

// Until the line is one of them.
void LineTyping::narrow() {
    if (!offers.isOffering())
        return;
    const std::string before = field_.beforeCursor();
    Completion found = before.empty() ? Completion() : complete_(before);
    const bool isThere = found.choices.size() == 1 && before.ends_with(found.text);
    if (found.choices.empty() || isThere)
        return offers.close();
    offer(std::move(found));
}

void LineTyping::offer(Completion found) {
    replaced_ = found.replaced;
    offers.offer(std::move(found));
}

void LineTyping::take(const Completion::Choice& choice) {
    if (!field_.replaceBefore(replaced_, choice.text))
        refuse();
    noteBegin();
}

} // namespace larkspin
