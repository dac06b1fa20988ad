// The display that a program with windows needs.
#pragma once

#include <memory>

class QApplication;

namespace larkspin {

// Qt's application on the owner's display. Without one, this is told, and the process ends.
std::unique_ptr<QApplication> openDisplay(char* program);

// Windows can be half transparent on it.
bool drawsTransparency();

} // namespace larkspin
