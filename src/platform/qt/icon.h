// The program's icon, a CD.
#pragma once

class QIcon;

namespace larkspin {

QIcon programIcon();

} // namespace larkspin
