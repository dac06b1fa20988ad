#include "host/online_time.h"

#include "chat/reply.h"
#include "host/host_client.h"
#include "shell/this_run.h"
#include "text/characters.h"

#include <string>
#include <string_view>

namespace larkspin {

static std::string withBoldDigits(std::string_view text) {
    std::string bold;
    for (const char byte : text)
        if (isDigit(byte))
            bold.append("<b>").append(1, byte).append("</b>");
        else
            bold += byte;
    return bold;
}

void OnlineTime::ot() {
    if (core_.reply.refusedInSilence("use aol's online clock to view online time in silent mode"))
        return;
    inTurn_.run([this] {
        const ThisRun run(core_.state);
        const auto told = client_.errands().timeOnline();
        if (told && run.lasts())
            core_.reply.saychat(withBoldDigits(*told));
    });
}

} // namespace larkspin
