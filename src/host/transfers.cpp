#include "host/transfers.h"

#include "chat/reply.h"
#include "host/host_client.h"
#include "host/transfer_texts.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "text/fold.h"

namespace larkspin {

static const std::string noUpload = "you arent uploading, bitch";

void Transfers::ustat() {
    reportUpload(AskedFrom::chat);
}

void Transfers::boxUpload() {
    reportUpload(AskedFrom::tray);
}

void Transfers::reportUpload(AskedFrom where) {
    const HostHandle window = client_.modalWindow();
    if (window == noHandle) {
        tellOfNoUpload(where);
        return;
    }
    const auto [status, timeLeft] = client_.statics(window);
    if (timeLeft != noHandle)
        tellUpload({.file = transferredFile(client_.controlText(status)),
                    .percentage = uploadPercentage(client_.controlText(window)),
                    .minutes = uploadMinutes(client_.controlText(timeLeft))},
                   where);
}

void Transfers::tellUpload(const Progress& upload, AskedFrom where) {
    const auto boxed = [&](const std::string& sign) {
        return "upload:  " + upload.file + " - " + upload.percentage + sign +
               " - min:  " + upload.minutes;
    };
    if (where == AskedFrom::tray)
        dialogs_.box(boxed("%"));
    else
        reply_.sayOrBox("upload:  <b>" + foldCase(upload.file) + "</b> - <b>" + upload.percentage +
                            "%</b> - min:  <b>" + upload.minutes,
                        boxed(""));
}

// Idle mode asks for both reports each minute, and has nothing to say about what isn't there.
void Transfers::tellOfNoUpload(AskedFrom where) {
    if (state_.idleClock.enabled())
        return;
    const bool isSilent = state_.silnt;
    reply_.sayOrBox(noUpload);
    if (where == AskedFrom::tray && !isSilent)
        dialogs_.box(noUpload);
}

void Transfers::dstat() {
    const HostHandle window = client_.downloadWindow();
    if (window == noHandle) {
        if (!state_.idleClock.enabled())
            reply_.sayOrBox("you're not downloading, bitch");
        return;
    }
    const auto [status, timeLeft] = client_.statics(window);
    const std::string file = transferredFile(client_.controlText(status));
    const std::string percentage = downloadPercentage(client_.windowCaption(window));
    const std::string minutes = downloadMinutes(client_.controlText(timeLeft));
    reply_.sayOrBox("download:  <b>" + foldCase(file) + "</b> - <b>" + percentage +
                        "</b> - min:  <b>" + foldCase(minutes),
                    "download:  " + file + " - " + percentage + " - min:  " + minutes);
}

std::string Transfers::modalStatus() {
    return client_.controlText(client_.statics(client_.modalWindow()).first);
}

// False, and nothing is hidden, unless the modal window is an upload's.
bool Transfers::hideUpload() {
    if (!tellsOfUpload(modalStatus()))
        return false;
    const HostHandle window = client_.modalWindow();
    client_.showHostWindow(window, ShowCommand::hide);
    client_.showHostWindow(window, ShowCommand::minimise);
    return true;
}

void Transfers::upzon() {
    const std::string status = modalStatus();
    if (hideUpload())
        reply_.saychat(foldCase(status));
    else
        reply_.sayOrBox(noUpload);
}

void Transfers::upzoff() {
    if (!tellsOfUpload(modalStatus())) {
        reply_.sayOrBox(noUpload);
        return;
    }
    client_.showHostWindow(client_.modalWindow(), ShowCommand::restore);
    reply_.saychat("upchat off");
}

void Transfers::pressEndNotice() {
    if (!tellsOfEnd(modalStatus()))
        return;
    client_.pressIcon(client_.firstIcon(client_.modalWindow()));
    state_.uploadSeen = "nope";
}

// Seen before it is said, since the next second may come in the middle of the message.
void Transfers::hideNewUpload() {
    if (!tellsOfTransfer(modalStatus())) {
        state_.uploadSeen = "nope";
    } else if (state_.uploadSeen != "yep") {
        state_.uploadSeen = "yep";
        hideUpload();
        reply_.saychat("auto-upchat enabled");
    }
}

} // namespace larkspin
