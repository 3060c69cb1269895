// File operations on photographs, as a port so that tests can make them fail.
#pragma once

#include <cstdint>
#include <string>

namespace dossierkit::files {

// Paths are UTF-8; a backslash separates folders on every system. Each may throw a Failure
// (53 not found, 61 disk full, 70 permission denied, 75 path or access, 76 path not found). Only regular
// files are files, and links to them; a folder, a pipe, a device is none.
class Files {
 public:
  virtual ~Files() = default;
  // True for a file that exists.
  virtual bool FileExists(const std::string& path) const = 0;
  // Deletes a file; `force` also a write-protected one. Of a link the link itself.
  virtual void DeleteFile(const std::string& path, bool force) = 0;
  // Copies the bytes of a file; an existing target is replaced if `overwrite`, else it fails (58). A target
  // that is a link is replaced, and what it leads to stays. A write-protected target is refused (70).
  virtual void CopyFile(const std::string& source, const std::string& target, bool overwrite) = 0;
  // Size in bytes.
  virtual std::uint64_t FileLen(const std::string& path) const = 0;
};

// The files on the disks. Here FileExists never throws. Of CopyFile the target is whole at every moment, the
// old file or the copy, and keeps its mode and group. Where its folder takes no second file, has no room for
// one, or lets nobody replace the target, the target itself is written, and a failure puts its bytes back;
// only a program that ends in the middle of this leaves half a copy. What was copied is on the disk.
class LocalFiles : public Files {
 public:
  bool FileExists(const std::string& path) const override;
  void DeleteFile(const std::string& path, bool force) override;
  void CopyFile(const std::string& source, const std::string& target, bool overwrite) override;
  std::uint64_t FileLen(const std::string& path) const override;
};

}  // namespace dossierkit::files
