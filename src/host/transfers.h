// The watch over the client's file transfers: tells how far they are, and keeps the upload's window
// out of the owner's way.
#pragma once

#include "chat/core.h"
#include "host/host_client.h"

#include <optional>

namespace larkspin {

class Transfers {
public:
    Transfers(const Core& core, HostClient& client)
        : state_(core.state), dialogs_(core.dialogs), reply_(core.reply), client_(client) {}

    // The commands; the tray's `ustatz` asks for a box.
    void ustat();
    void dstat();
    void boxUpload();

    // The tray's entries that hide the upload's window and bring it back.
    void upzon();
    void upzoff();

    // Each second: a notice that a transfer has ended is pressed away, and an upload that begins is
    // hidden, once.
    void pressEndNotice();
    void hideNewUpload();

private:
    enum class AskedFrom { chat, tray };

    void reportUpload(AskedFrom where);
    void tellUpload(const Transfer& upload, AskedFrom where);
    void tellOfNoUpload(AskedFrom where);
    std::optional<Notice> notice() { return client_.notices().notice(); }

    AppState& state_;
    Dialogs& dialogs_;
    Reply& reply_;
    HostClient& client_;
};

} // namespace larkspin
