// The functions of the C library that disk_posix.cpp uses, in the place of the library's own.
#ifndef _WIN32

#include "tests/platform/files/system_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace dossierkit::files {
namespace {

SystemCalls* watching = nullptr;

// Fails with the decided number, or makes the call.
template <typename... Arguments>
long Call(const char* name, long number, Arguments... arguments) {
  if (const int failure = SystemCalls::Decide(name)) {
    errno = failure;
    return -1;
  }
  return syscall(number, arguments...);
}

}  // namespace

SystemCalls::SystemCalls(std::function<int(const std::string&, std::size_t)> decide)
    : decide_(std::move(decide)) {
  watching = this;
}

SystemCalls::~SystemCalls() { watching = nullptr; }

int SystemCalls::Decide(const std::string& name, const std::string& path) {
  if (!watching) return 0;
  watching->path_ = path;
  watching->calls_.push_back(name);
  return watching->decide_(name, watching->calls_.size());
}

}  // namespace dossierkit::files

using dossierkit::files::Call;
using dossierkit::files::SystemCalls;

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const char* name = (flags & O_CREAT) ? "create" : (flags & O_DIRECTORY) ? "open folder" : "open";
  if (const int failure = SystemCalls::Decide(name, path)) {
    errno = failure;
    return -1;
  }
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t pread(int handle, void* bytes, size_t count, off_t place) {
  return Call("read", SYS_pread64, handle, bytes, count, place);
}

ssize_t pwrite(int handle, const void* bytes, size_t count, off_t place) {
  return Call("write", SYS_pwrite64, handle, bytes, count, place);
}

int fsync(int handle) {
  struct stat status {};
  fstat(handle, &status);
  return static_cast<int>(Call(S_ISDIR(status.st_mode) ? "flush folder" : "flush", SYS_fsync, handle));
}

int posix_fallocate(int handle, off_t place, off_t size) {
  return Call("reserve", SYS_fallocate, handle, 0, place, size) == 0 ? 0 : errno;
}

int ftruncate(int handle, off_t size) noexcept {
  return static_cast<int>(Call("cut", SYS_ftruncate, handle, size));
}

int fchown(int handle, uid_t owner, gid_t group) noexcept {
  return static_cast<int>(Call("group", SYS_fchown, handle, owner, group));
}

int fchmod(int handle, mode_t mode) noexcept {
  return static_cast<int>(Call("rights", SYS_fchmod, handle, mode));
}

int flock(int handle, int operation) noexcept {
  return static_cast<int>(Call("lock", SYS_flock, handle, operation));
}

int rename(const char* from, const char* to) noexcept {
  return static_cast<int>(Call("rename", SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int unlink(const char* path) noexcept {
  return static_cast<int>(Call("delete", SYS_unlinkat, AT_FDCWD, path, 0));
}
}

#endif
