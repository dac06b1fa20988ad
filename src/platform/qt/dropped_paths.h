// What files and directories are dropped, as drive paths.
#pragma once

#include <QMimeData>
#include <string>
#include <vector>

namespace larkspin {

// Empty for what names none on this machine.
std::vector<std::string> droppedPaths(const QMimeData& dropped);

} // namespace larkspin
