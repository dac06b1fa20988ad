#include "host/transfers.h"

namespace larkspin {

void Transfers::ustat() {}
void Transfers::dstat() {}
void Transfers::boxUpload() {}
void Transfers::upzon() {}
void Transfers::upzoff() {}
void Transfers::pressEndNotice() {}
void Transfers::hideNewUpload() {}

} // namespace larkspin
