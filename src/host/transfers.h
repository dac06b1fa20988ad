// The watch over the client's file transfers: tells how far they are, and keeps the upload's window
// out of the owner's way.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class HostClient;

class Transfers {
public:
    Transfers(const Core& core, HostClient& client) : core_(core), client_(client) {}

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
    [[maybe_unused]] Core core_;
    [[maybe_unused]] HostClient& client_;
};

} // namespace larkspin
