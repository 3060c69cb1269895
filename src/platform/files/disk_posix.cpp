#ifndef _WIN32

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <string>
#include <system_error>
#include <utility>

#include "platform/files/disk.h"

namespace dossierkit::files {
namespace {

constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
constexpr mode_t kRights = 0777;  // without the bits of programs
constexpr mode_t kRightsOfANewFile = 0666;
constexpr int kTries = 100;

[[noreturn]] void Throw(int number) {
  // A quota that is used up is a full disk to whom it concerns.
  throw std::system_error(number == EDQUOT ? ENOSPC : number, std::generic_category());
}

void Require(bool done) {
  if (!done) Throw(errno);
}

struct stat StatusOf(int handle) {
  struct stat status {};
  Require(fstat(handle, &status) == 0);
  return status;
}

// A handle of a regular file.
int Open(const std::filesystem::path& path, int flags) {
  const int handle = open(path.c_str(), flags | kAlways);
  Require(handle >= 0);
  struct stat status {};
  if (fstat(handle, &status) == 0 && S_ISREG(status.st_mode)) return handle;
  close(handle);
  Throw(ENOENT);
}

std::string OwnName() {
  std::random_device random;
  char name[48];
  std::snprintf(name, sizeof name, ".dossierkit-%08x%08x.part", random(), random());
  return name;
}

}  // namespace

bool IsLink(const std::filesystem::path& path) { return std::filesystem::is_symlink(path); }

OpenFile OpenFile::ToRead(const std::filesystem::path& path) { return OpenFile(Open(path, O_RDONLY)); }

OpenFile OpenFile::ToReplace(const std::filesystem::path& path) {
  return OpenFile(Open(path, O_WRONLY | O_NOFOLLOW));
}

OpenFile OpenFile::ToRewrite(const std::filesystem::path& path) {
  OpenFile file(Open(path, O_RDWR | O_NOFOLLOW));
  if (StatusOf(file.handle_).st_nlink != 1) Throw(EACCES);
  if (flock(file.handle_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) Throw(EACCES);
  return file;
}

OpenFile OpenFile::Create(const std::filesystem::path& folder, std::filesystem::path& name) {
  for (int left = kTries;; --left) {
    name = folder / OwnName();
    const int handle =
        open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | kAlways, kRightsOfANewFile);
    if (handle >= 0) return OpenFile(handle);
    if (errno != EEXIST || left == 0) Throw(errno);
  }
}

OpenFile::OpenFile(OpenFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

OpenFile::~OpenFile() {
  if (handle_ >= 0) close(handle_);
}

std::uint64_t OpenFile::Size() const { return static_cast<std::uint64_t>(StatusOf(handle_).st_size); }

std::size_t OpenFile::Read(std::uint64_t place, std::span<char> bytes) const {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count =
        pread(handle_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(place + done));
    Require(count >= 0);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

void OpenFile::Write(std::uint64_t place, std::span<const char> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = pwrite(handle_, bytes.data(), bytes.size(), static_cast<off_t>(place));
    Require(count >= 0);
    if (count == 0) Throw(ENOSPC);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
    place += static_cast<std::uint64_t>(count);
  }
}

void OpenFile::Reserve(std::uint64_t size) {
  if (size == 0) return;
  const int number = posix_fallocate(handle_, 0, static_cast<off_t>(size));
  if (number == ENOSPC || number == EDQUOT || number == EFBIG || number == EIO) Throw(number);
}

void OpenFile::Cut(std::uint64_t size) { Require(ftruncate(handle_, static_cast<off_t>(size)) == 0); }

void OpenFile::Flush() { Require(fsync(handle_) == 0); }

void OpenFile::TakeRightsOf(const OpenFile& other) {
  const struct stat status = StatusOf(other.handle_);
  // Only a member of the group may give it away.
  static_cast<void>(fchown(handle_, static_cast<uid_t>(-1), status.st_gid));
  Require(fchmod(handle_, status.st_mode & kRights) == 0);
}

void RenameOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  Require(rename(from.c_str(), to.c_str()) == 0);
}

void FlushFolder(const std::filesystem::path& folder) noexcept {
  const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  fsync(handle);
  close(handle);
}

void RemoveFile(const std::filesystem::path& path) { Require(unlink(path.c_str()) == 0); }

}  // namespace dossierkit::files

#endif
