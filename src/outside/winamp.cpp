#include "outside/winamp.h"

namespace larkspin {

void Winamp::amp() {}
void Winamp::wstop() {}
void Winamp::wpre() {}
void Winamp::wplay() {}
void Winamp::wnext() {}

} // namespace larkspin
