#include "support/talk.h"

namespace larkspin {

void converse(VirtualMachine& machine, const std::vector<Turn>& turns) {
    for (const Turn& turn : turns) {
        for (const std::string& line : turn.lines) {
            SCOPED_TRACE(line);
            EXPECT_EQ(machine.answer(line), turn.answer);
        }
        machine.advance(turn.wait);
    }
}

} // namespace larkspin
