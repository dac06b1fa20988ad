#include "host/trace_word.h"

#include "shell/trace.h"
#include "text/blanks.h"

namespace larkspin {

SlashWord traceWord(const Trace& trace, SlashWords::Tell tell) {
    return {"trace",
            "",
            "tells what larkspin has done last",
            [&trace, tell = std::move(tell)](std::string_view rest) {
                if (!withoutBlanks(rest).empty())
                    return false;
                Trace::Buffer buffer;
                for (std::size_t number = 0; number < trace.size(); ++number)
                    tell(std::string(trace.line(number, buffer)));
                return true;
            },
            {},
            "larkspin"};
}

} // namespace larkspin
