#include "shell/chosen_files.h"

#include "shell/dialogs.h"
#include "shell/files.h"

namespace larkspin {

std::vector<std::string> thoseThere(const std::vector<std::string>& chosen, Files& files,
                                    Dialogs& dialogs) {
    std::vector<std::string> there;
    std::string missing;
    for (const std::string& path : chosen) {
        const Files::Presence presence = files.presence(path);
        if (presence == Files::Presence::there) {
            there.push_back(path);
            continue;
        }
        missing += (missing.empty() ? "couldn't open " : "\ncouldn't open ") + path + ":  " +
                   (presence == Files::Presence::gone ? "there is no such file" : noAnswer);
    }
    if (!missing.empty())
        dialogs.box(missing);
    return there;
}

} // namespace larkspin
