// A terminal that shows what steers others as it is, as editors have them.
#pragma once

namespace larkspin {

// By its name in the environment, which such a terminal may have left out.
bool isDumbTerminal();

} // namespace larkspin
