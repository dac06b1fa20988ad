#include "host/transfers.h"

#include "chat/markup.h"
#include "chat/reply.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "text/fold.h"

namespace larkspin {

static const std::string noUpload = "you arent uploading, bitch";

// A text of the client's in a reply. What looks like a tag there is part of the text.
static std::string asSaid(const std::string& text) {
    return withoutTags(foldCase(text));
}

void Transfers::ustat() {
    reportUpload(AskedFrom::chat);
}

void Transfers::boxUpload() {
    reportUpload(AskedFrom::tray);
}

// A notice of another kind isn't told of at all.
void Transfers::reportUpload(AskedFrom where) {
    const auto shown = notice();
    if (!shown)
        tellOfNoUpload(where);
    else if (shown->upload)
        tellUpload(*shown->upload, where);
}

void Transfers::tellUpload(const Transfer& upload, AskedFrom where) {
    const auto boxed = [&](const std::string& sign) {
        return "upload:  " + upload.file + " - " + upload.percentage + sign +
               " - min:  " + upload.minutes;
    };
    if (where == AskedFrom::tray)
        dialogs_.box(boxed("%"));
    else
        reply_.sayOrBox("upload:  <b>" + asSaid(upload.file) + "</b> - <b>" +
                            withoutTags(upload.percentage) + "%</b> - min:  <b>" +
                            withoutTags(upload.minutes),
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
    const auto download = client_.notices().download();
    if (download)
        reply_.sayOrBox("download:  <b>" + asSaid(download->file) + "</b> - <b>" +
                            withoutTags(download->percentage) + "</b> - min:  <b>" +
                            asSaid(download->minutes),
                        "download:  " + download->file + " - " + download->percentage +
                            " - min:  " + download->minutes);
    else if (!state_.idleClock.enabled())
        reply_.sayOrBox("you're not downloading, bitch");
}

void Transfers::upzon() {
    const auto shown = notice();
    if (!shown || !shown->isUpload) {
        reply_.sayOrBox(noUpload);
        return;
    }
    client_.notices().hide();
    reply_.saychat(asSaid(shown->text));
}

void Transfers::upzoff() {
    const auto shown = notice();
    if (!shown || !shown->isUpload) {
        reply_.sayOrBox(noUpload);
        return;
    }
    client_.notices().bringBack();
    reply_.saychat("upchat off");
}

void Transfers::pressEndNotice() {
    const auto shown = notice();
    if (!shown || !shown->tellsOfEnd)
        return;
    client_.notices().confirm();
    state_.uploadSeen = "nope";
}

// Marked as seen before it is said, since the next second may come in the middle of the message.
void Transfers::hideNewUpload() {
    const auto shown = notice();
    if (!shown || !shown->tellsOfTransfer) {
        state_.uploadSeen = "nope";
    } else if (state_.uploadSeen != "yep") {
        state_.uploadSeen = "yep";
        if (shown->isUpload)
            client_.notices().hide();
        reply_.saychat("auto-upchat enabled");
    }
}

} // namespace larkspin
