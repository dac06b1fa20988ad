// Files that the owner has chosen to be opened. A dialog lets him type any name: those that aren't
// there are told in a box, and left out.
#pragma once

#include <string>
#include <vector>

namespace larkspin {

class Dialogs;
class Files;

// Serves events while the disk is asked.
std::vector<std::string> thoseThere(const std::vector<std::string>& chosen, Files& files,
                                    Dialogs& dialogs);

} // namespace larkspin
