// The line in which the owner types what he says, with the keys that shells have. One row of the
// screen, and what it offers above that.
#pragma once

#include "host/line_history.h"
#include "host/line_typing.h"
#include "platform/terminal/room/typed_offers.h"
#include "platform/terminal/screen/edited_text.h"
#include "platform/terminal/screen/layers.h"

#include <string>
#include <string_view>

namespace larkspin {

class TypedLine : private TypedField {
public:
    // The history must live on.
    explicit TypedLine(LineHistory& history) : typing(*this, history), offers_(typing.offers) {}

    // On one row, after a prompt such as the owner's name. Gives where the cursor stands.
    Cursor draw(Cells& cells, const Area& row, std::string_view prompt, const CellStyle& style);
    // What the line offers, at the foot of an area above it, if it offers anything.
    void drawOffers(Cells& cells, const Area& above, const TypedOffers::Looks& looks) {
        offers_.draw(cells, above, looks);
    }

    // Whether it makes anything of the stroke. What has no use here is left to others, and so is
    // the mouse, but on what is offered.
    bool take(const Stroke& stroke);

    // Its cursor counts characters.
    LineTyping typing;

private:
    Draft typed() const override { return {text_.text(), text_.cursor()}; }
    std::string beforeCursor() const override { return text_.beforeCursor(); }
    void become(const Draft& draft) override { text_.become(draft.text, draft.cursor); }
    void becomeEmpty() override { text_.become({}); }
    void forget() override { text_.forgetCut(); }
    bool replaceBefore(std::size_t characters, const std::string& text) override {
        return text_.replaceBefore(characters, text);
    }

    bool takeKey(const KeyStroke& key);
    bool edit(const KeyStroke& key);
    bool giveUp();
    void takePaste(std::string_view pasted);
    void insert(std::u32string_view characters);

    EditedText text_{LineHistory::mostCharacters};
    std::size_t shownFrom_ = 0; // the character that stands first on the row
    TypedOffers offers_;
};

} // namespace larkspin
