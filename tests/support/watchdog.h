// A watch over the tests: one that hangs ends its program with the stack that it hangs in.
#pragma once

namespace dossierkit::tests {

// Ends the process by SIGABRT, with `what` and the stack of the main thread on standard error, unless this
// is called again within that many seconds; under a debugger it goes on. Null is what was told the last time.
// On Windows without the stack.
void ExpectProgressWithin(unsigned seconds, const char* what);

// Writes the stack of the calling thread to standard error; from a signal handler, too. On Windows it is the
// addresses alone.
void PrintStack();

// Runs all tests, each of which may go 5 minutes without beginning, ending or noting a failure. Gives what
// main() returns.
int RunTests(int argc, char** argv);

}  // namespace dossierkit::tests
