#include "host/window_tree/window_notices.h"

#include "host/window_tree/window_texts.h"
#include "host/window_tree/window_tree_host.h"

namespace larkspin {

// An upload's has a second line, for the time left.
std::optional<Notice> WindowNotices::notice() {
    const HostHandle window = host_.modalWindow();
    if (window == noHandle)
        return std::nullopt;
    const auto [status, timeLeft] = host_.statics(window);
    Notice notice = noticeThatSays(status.value_or(""));
    if (timeLeft)
        notice.upload = {.file = transferredFile(notice.text),
                         .percentage = uploadPercentage(host_.controlText(window)),
                         .minutes = uploadMinutes(*timeLeft)};
    return notice;
}

void WindowNotices::confirm() {
    host_.pressIcon(host_.firstIcon(host_.modalWindow()));
}

void WindowNotices::hide() {
    beforeHiding_();
    const HostHandle window = host_.modalWindow();
    host_.showHostWindow(window, ShowCommand::hide);
    host_.showHostWindow(window, ShowCommand::minimise);
}

void WindowNotices::bringBack() {
    host_.showHostWindow(host_.modalWindow(), ShowCommand::restore);
}

std::optional<Transfer> WindowNotices::download() {
    const HostHandle window = host_.downloadWindow();
    if (window == noHandle)
        return std::nullopt;
    const auto [status, timeLeft] = host_.statics(window);
    return Transfer{.file = transferredFile(status.value_or("")),
                    .percentage = downloadPercentage(host_.windowCaption(window)),
                    .minutes = downloadMinutes(timeLeft.value_or(""))};
}

} // namespace larkspin
