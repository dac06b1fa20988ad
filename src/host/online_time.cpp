#include "host/online_time.h"

#include "chat/reply.h"
#include "host/client_addresses.h"
#include "host/host_client.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/utf8.h"

#include <string>
#include <string_view>

namespace larkspin {

namespace {

constexpr double afterNotice = 0.5; // seconds, in which the client puts it away

// The notice tells the time of day first; the time online begins that many characters after the
// full stop. In a text without one they count as if it stood in front.
constexpr std::size_t afterFullStop = 16;

std::string_view timeOnline(std::string_view notice) {
    const auto stop = notice.find('.');
    if (stop == std::string_view::npos)
        return notice.substr(prefixLength(notice, afterFullStop - 1));
    notice.remove_prefix(stop);
    return notice.substr(prefixLength(notice, afterFullStop));
}

std::string withBoldDigits(std::string_view text) {
    std::string bold;
    for (const char byte : text)
        if (byte >= '0' && byte <= '9')
            bold.append("<b>").append(1, byte).append("</b>");
        else
            bold += byte;
    return bold;
}

} // namespace

void OnlineTime::ot() {
    if (core_.reply.refusedInSilence("use aol's online clock to view online time in silent mode"))
        return;
    inTurn_.run([this] { readClock(); });
}

void OnlineTime::readClock() {
    const ThisRun run(core_.state);
    client_.gotoKeyword(onlineClock);
    const HostHandle notice = client_.waitForClockNotice();
    if (notice == noHandle || !run.lasts())
        return;
    const std::string text = client_.controlText(client_.statics(notice).first);
    client_.pressByKey(client_.firstIcon(notice));
    Pause{core_.loop}(afterNotice);
    if (run.lasts())
        core_.reply.saychat(withBoldDigits(timeOnline(text)));
}

} // namespace larkspin
