// What the line offers, drawn above it, and the mouse there: it points at a choice and takes it.
#pragma once

#include "host/line_offers.h"
#include "platform/terminal/screen/cells.h"
#include "platform/terminal/screen/strokes.h"

namespace larkspin {

class TypedOffers {
public:
    // They must outlive it.
    explicit TypedOffers(LineOffers& offers);

    // Whether the stroke has been dealt with.
    bool take(const MouseStroke& stroke);

    struct Looks {
        CellStyle plain{}, dim{}, marked{};
    };
    // At the foot of the area.
    void draw(Cells& cells, const Area& above, const Looks& looks);

private:
    void show();
    void scroll(int rows);
    void turnWheel(int way);
    bool press(int row, int column);
    void drawChoices(Cells& cells, const Area& above, const Looks& looks);
    void drawQuestion(Cells& cells, const Area& above, const Looks& looks);
    int rowCount() const;

    LineOffers& offers_;
    int first_ = 0;      // the row of them that stands uppermost
    Area list_;          // where rows stand
    Area says_, leaves_; // the answers to the question
};

} // namespace larkspin
