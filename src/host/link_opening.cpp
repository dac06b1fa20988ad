#include "host/link_opening.h"

#include "host/links.h"
#include "host/web_address.h"
#include "shell/dialogs.h"

namespace larkspin {

void LinkOpening::open(const std::string& link) {
    const auto address = webAddress(link);
    if (!address)
        return;
    if (!agreed_.contains(*address)) {
        if (!dialogs_.ask(questionAbout(*address), Dialogs::Preset::no))
            return;
        if (agreed_.size() < mostAgreed)
            agreed_.insert(*address);
    }
    open_(*address);
}

} // namespace larkspin
