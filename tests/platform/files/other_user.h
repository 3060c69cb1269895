// Other users, small disks and other programs, for tests of shared folders. Only an administrator can be
// everybody; without his rights such a test is skipped and says so.
#pragma once

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace dossierkit::files {

constexpr int kUnexpected = 255;

// Another program that does the work: its result, from 0 to 254, is waited for.
class Program {
 public:
  explicit Program(const std::function<int()>& work) : process_(fork()) {
    if (process_ != 0) return;
    int result = kUnexpected;
    try {
      result = work();
    } catch (...) {
    }
    _exit(result);
  }
  int Result() const {
    int status = 0;
    waitpid(process_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : kUnexpected;
  }

 private:
  pid_t process_;
};

struct User {
  uid_t number;
  std::vector<gid_t> groups;  // the first is his own
};

// The work, started as that user.
inline Program StartAs(const User& user, const std::function<int()>& work) {
  return Program([&] {
    const bool changed = setgroups(user.groups.size(), user.groups.data()) == 0 &&
                         setgid(user.groups.front()) == 0 && setuid(user.number) == 0;
    return changed ? work() : kUnexpected;
  });
}
inline int As(const User& user, const std::function<int()>& work) { return StartAs(user, work).Result(); }

// A disk of its own in a folder, seen by this program and its children alone.
class SmallDisk {
 public:
  SmallDisk(std::string folder, const std::string& options) : folder_(std::move(folder)) {
    mounted_ = unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               mount("tmpfs", folder_.c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  ~SmallDisk() {
    if (mounted_) umount(folder_.c_str());
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  bool Mounted() const { return mounted_; }

 private:
  std::string folder_;
  bool mounted_ = false;
};

}  // namespace dossierkit::files
