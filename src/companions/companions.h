// What stands around the player, put together: the owner's notes and his launcher items.
#pragma once

#include "chat/core.h"

namespace larkspin {

class DataDirectory;
class LineFiles;

// Of the floors below, what the companions work with beside the core.
struct CompanionsNeeds {
    LineFiles& lineFiles;
    const DataDirectory& directory;
};

struct Companions {
    Companions(const Core& core, const CompanionsNeeds& needs) : core_(core), needs_(needs) {}

private: // what the units are made with
    Core core_;
    CompanionsNeeds needs_;

public:
    void load();
    void save();
};

} // namespace larkspin
