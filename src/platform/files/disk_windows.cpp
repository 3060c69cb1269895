#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <aclapi.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <system_error>
#include <utility>

#include "platform/files/disk.h"

namespace dossierkit::files {
namespace {

// What others may do with a file that is open here: everything, as they may elsewhere.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int kTries = 100;
constexpr std::size_t kBlock = 1 << 20;

// The numbers of Windows in the words of POSIX, which callers compare with.
int NumberOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME: return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_PRIVILEGE_NOT_HELD: return EACCES;
    case ERROR_WRITE_PROTECT: return EROFS;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return ENOSPC;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return EEXIST;
    default: return EIO;
  }
}

[[noreturn]] void Throw(int number) { throw std::system_error(number, std::generic_category()); }

void Require(bool done) {
  if (!done) Throw(NumberOf(GetLastError()));
}

HANDLE HandleOf(int handle) { return reinterpret_cast<HANDLE>(_get_osfhandle(handle)); }

bool IsFolder(const std::filesystem::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// A descriptor of a regular file; the handle goes with it.
int Open(const std::filesystem::path& path, DWORD access, DWORD shared, DWORD how) {
  const HANDLE handle =
      CreateFileW(path.c_str(), access, shared, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    const int number = NumberOf(GetLastError());
    Throw(number == EACCES && IsFolder(path) ? ENOENT : number);
  }
  const int descriptor = GetFileType(handle) == FILE_TYPE_DISK
                             ? _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_BINARY)
                             : -1;
  if (descriptor >= 0) return descriptor;
  CloseHandle(handle);
  Throw(ENOENT);
}

void RefuseLink(const std::filesystem::path& path) {
  if (IsLink(path)) Throw(EACCES);
}

std::string OwnName() {
  std::random_device random;
  char name[48];
  std::snprintf(name, sizeof name, ".dossierkit-%08x%08x.part", random(), random());
  return name;
}

// Where a call reads or writes.
OVERLAPPED At(std::uint64_t place) {
  OVERLAPPED at{};
  at.Offset = static_cast<DWORD>(place & 0xFFFFFFFFU);
  at.OffsetHigh = static_cast<DWORD>(place >> 32);
  return at;
}

DWORD BlockOf(std::size_t size) { return static_cast<DWORD>(std::min(size, kBlock)); }

}  // namespace

bool IsLink(const std::filesystem::path& path) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  // A file whose bytes lie elsewhere, in a cloud, is no link.
  return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) &&
         (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK || found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

OpenFile OpenFile::ToRead(const std::filesystem::path& path) {
  return OpenFile(Open(path, GENERIC_READ, kShared, OPEN_EXISTING));
}

OpenFile OpenFile::ToReplace(const std::filesystem::path& path) {
  RefuseLink(path);
  return OpenFile(Open(path, GENERIC_WRITE | READ_CONTROL, kShared, OPEN_EXISTING));
}

OpenFile OpenFile::ToRewrite(const std::filesystem::path& path) {
  RefuseLink(path);
  // Whoever reads it meanwhile may; whoever writes is refused.
  OpenFile file(Open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING));
  BY_HANDLE_FILE_INFORMATION status{};
  Require(GetFileInformationByHandle(HandleOf(file.handle_), &status));
  if (status.nNumberOfLinks != 1) Throw(EACCES);
  return file;
}

OpenFile OpenFile::Create(const std::filesystem::path& folder, std::filesystem::path& name) {
  for (int left = kTries;; --left) {
    name = folder / OwnName();
    try {
      return OpenFile(Open(name, GENERIC_READ | GENERIC_WRITE | WRITE_DAC, kShared, CREATE_NEW));
    } catch (const std::system_error& failure) {
      if (failure.code() != std::errc::file_exists || left == 0) throw;
    }
  }
}

OpenFile::OpenFile(OpenFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

OpenFile::~OpenFile() {
  if (handle_ >= 0) _close(handle_);
}

std::uint64_t OpenFile::Size() const {
  LARGE_INTEGER size{};
  Require(GetFileSizeEx(HandleOf(handle_), &size));
  return static_cast<std::uint64_t>(size.QuadPart);
}

std::size_t OpenFile::Read(std::uint64_t place, std::span<char> bytes) const {
  std::size_t done = 0;
  while (done < bytes.size()) {
    OVERLAPPED at = At(place + done);
    DWORD count = 0;
    if (!ReadFile(HandleOf(handle_), bytes.data() + done, BlockOf(bytes.size() - done), &count, &at)) {
      if (GetLastError() == ERROR_HANDLE_EOF) break;
      Require(false);
    }
    if (count == 0) break;
    done += count;
  }
  return done;
}

void OpenFile::Write(std::uint64_t place, std::span<const char> bytes) {
  while (!bytes.empty()) {
    OVERLAPPED at = At(place);
    DWORD count = 0;
    Require(WriteFile(HandleOf(handle_), bytes.data(), BlockOf(bytes.size()), &count, &at));
    if (count == 0) Throw(ENOSPC);
    bytes = bytes.subspan(count);
    place += count;
  }
}

void OpenFile::Reserve(std::uint64_t size) {
  FILE_ALLOCATION_INFO wanted{};
  wanted.AllocationSize.QuadPart = static_cast<LONGLONG>(std::max(size, Size()));
  if (SetFileInformationByHandle(HandleOf(handle_), FileAllocationInfo, &wanted, sizeof wanted)) return;
  const int number = NumberOf(GetLastError());
  if (number == ENOSPC) Throw(number);
}

void OpenFile::Cut(std::uint64_t size) {
  FILE_END_OF_FILE_INFO end{};
  end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
  Require(SetFileInformationByHandle(HandleOf(handle_), FileEndOfFileInfo, &end, sizeof end));
}

void OpenFile::Flush() { Require(FlushFileBuffers(HandleOf(handle_))); }

// The list of who may do what, as it stands: also the part that the file has from its folder.
void OpenFile::TakeRightsOf(const OpenFile& other) {
  PACL rights = nullptr;
  PSECURITY_DESCRIPTOR whole = nullptr;
  const DWORD read = GetSecurityInfo(HandleOf(other.handle_), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                     nullptr, nullptr, &rights, nullptr, &whole);
  if (read != ERROR_SUCCESS) Throw(NumberOf(read));
  const std::unique_ptr<void, decltype(&LocalFree)> owner(whole, &LocalFree);
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  Require(GetSecurityDescriptorControl(whole, &control, &revision));
  const SECURITY_INFORMATION inherits = (control & SE_DACL_PROTECTED) ? PROTECTED_DACL_SECURITY_INFORMATION
                                                                      : UNPROTECTED_DACL_SECURITY_INFORMATION;
  const DWORD written =
      SetSecurityInfo(HandleOf(handle_), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inherits, nullptr,
                      nullptr, rights, nullptr);
  if (written != ERROR_SUCCESS) Throw(NumberOf(written));
}

void RenameOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  Require(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

// The rename has written its names through.
void FlushFolder(const std::filesystem::path&) noexcept {}

void RemoveFile(const std::filesystem::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  const bool is_protected = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
  if (is_protected) Require(SetFileAttributesW(path.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}));
  if (DeleteFileW(path.c_str())) return;
  const DWORD error = GetLastError();
  if (is_protected) SetFileAttributesW(path.c_str(), attributes);
  Throw(NumberOf(error));
}

}  // namespace dossierkit::files

#endif
