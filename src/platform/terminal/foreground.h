// Whether this job may use the terminal behind a descriptor: the system stops whoever reads from
// it, or changes its mode, while another job has it.
#pragma once

namespace larkspin {

// Also what is no terminal, or nobody's, may be used.
bool isInForeground(int descriptor);

} // namespace larkspin
