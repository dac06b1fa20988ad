// What files and directories are dropped, as drive paths.
#pragma once

#include <QMimeData>
#include <string>
#include <vector>

namespace larkspin {

// The paths that were dropped; empty when they are none of this machine.
std::vector<std::string> droppedPaths(const QMimeData& dropped);

// Those of the paths that are files, or directories that can be entered.
std::vector<std::string> usable(const std::vector<std::string>& paths);

} // namespace larkspin
