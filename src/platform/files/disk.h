// Disk: the calls on files that every system has in its own way, for LocalFiles and for readers of pictures.
// disk_posix.cpp holds them for POSIX, disk_windows.cpp for Windows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>

#include "platform/environment/failure.h"

namespace dossierkit::files {

// The path that a text names: UTF-8, with backslashes or slashes between the folders.
std::filesystem::path PathOf(const std::string& path);

// What the disk answered, as the environment tells it: 53, 61, 70 or 75.
environment::Failure FailureOf(const std::error_code& error);

// True for a link to a file or a folder, wherever it leads.
bool IsLink(const std::filesystem::path& path);

// An open regular file, closed with the object. Every call throws std::system_error; what is no regular file
// is not found, and no call waits for the other end of a pipe.
class OpenFile {
 public:
  // An existing file, also behind a link.
  static OpenFile ToRead(const std::filesystem::path& path);
  // An existing file, opened for writing and left as it is; never one behind a link.
  static OpenFile ToReplace(const std::filesystem::path& path);
  // An existing file, to be read and written in its place; never one behind a link, or one that has a second
  // name elsewhere. While it is open a second such call fails, in any program (permission_denied).
  static OpenFile ToRewrite(const std::filesystem::path& path);
  // A new file of its own, under a name in the folder that nobody had before. `name` gets its path.
  static OpenFile Create(const std::filesystem::path& folder, std::filesystem::path& name);

  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&&) = delete;
  ~OpenFile();

  std::uint64_t Size() const;
  // Reads from `place` on and gives the number of bytes; fewer than asked for at the end of the file alone.
  std::size_t Read(std::uint64_t place, std::span<char> bytes) const;
  void Write(std::uint64_t place, std::span<const char> bytes);
  // Makes room for so many bytes in all where the disk can, so that writing them cannot fail for want of it.
  void Reserve(std::uint64_t size);
  void Cut(std::uint64_t size);
  // Returns when everything written is on the disk.
  void Flush();
  // Gives it the rights of another file and, where that is allowed, its group.
  void TakeRightsOf(const OpenFile& other);

 private:
  explicit OpenFile(int handle) : handle_(handle) {}

  int handle_;
};

// Puts a file in the place of another, or of a link, at once.
void RenameOver(const std::filesystem::path& from, const std::filesystem::path& to);
// Brings a folder's names to the disk, where the system lets us.
void FlushFolder(const std::filesystem::path& folder) noexcept;
// Deletes a file, or a link, even if it is write-protected. Where that fails it stays protected.
void RemoveFile(const std::filesystem::path& path);

}  // namespace dossierkit::files
