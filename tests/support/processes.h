// Processes: several clerks at once.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <vector>

namespace dossierkit::tests {

// Runs `work(number)` in `count` processes at once, numbered from 0. Each must open its own connections;
// nothing of the caller's may be open. Gives how many of them did not end well.
template <typename Work>
int RunInProcesses(int count, Work work) {
  std::vector<pid_t> children;
  for (int number = 0; number < count; ++number) {
    const pid_t child = fork();
    if (child == 0) {
      int code = 0;
      try {
        work(number);
      } catch (const std::exception& failure) {
        std::fprintf(stderr, "process %d: %s\n", number, failure.what());
        code = 1;
      }
      // Nothing of the parent's is ended here.
      _exit(code);
    }
    children.push_back(child);
  }
  int failed = 0;
  for (const pid_t child : children) {
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) ++failed;
  }
  return failed;
}

}  // namespace dossierkit::tests
