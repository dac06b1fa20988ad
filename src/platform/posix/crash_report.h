// Writes down what the program did last when it crashes: by a fault, or by an assert that fails.
#pragma once

#include <string>

namespace larkspin {

class Trace;

// From now on. The report replaces the file with that native path, for its owner alone; where that
// can't be, it goes to the standard error. Then the process ends as it would have without it, and
// what has caught such signals before, as a sanitizer does, still has its say. The trace must live
// as long as the process.
void reportCrashes(const Trace& trace, const std::string& file);

// From now on this is called before the report, to put right what is outside the process. It may do
// no more than a handler of signals. Null for nothing.
void beforeCrashReport(void (*task)());

} // namespace larkspin
