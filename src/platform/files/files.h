// File operations on photographs, as a port so that tests can make them fail.
#pragma once

#include <cstdint>
#include <string>

namespace dossierkit::files {

// Paths are UTF-8; a backslash separates folders on every system. Each may throw a Failure
// (53 not found, 61 disk full, 70 permission denied, 75 path or access, 76 path not found).
class Files {
 public:
  virtual ~Files() = default;
  // True for a file that exists and is no folder.
  virtual bool FileExists(const std::string& path) const = 0;
  // Deletes a file; `force` also a write-protected one.
  virtual void DeleteFile(const std::string& path, bool force) = 0;
  // Copies the bytes of a file; an existing target is replaced if `overwrite`, else it fails (58).
  virtual void CopyFile(const std::string& source, const std::string& target, bool overwrite) = 0;
  // Size in bytes.
  virtual std::uint64_t FileLen(const std::string& path) const = 0;
};

// The files on the disks. Here FileExists never throws.
class LocalFiles : public Files {
 public:
  bool FileExists(const std::string& path) const override;
  void DeleteFile(const std::string& path, bool force) override;
  void CopyFile(const std::string& source, const std::string& target, bool overwrite) override;
  std::uint64_t FileLen(const std::string& path) const override;
};

}  // namespace dossierkit::files
