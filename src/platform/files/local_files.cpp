#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/files/files.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;

using environment::MakeFailure;

fs::path PathOf(const std::string& path) {
  const std::string native = environment::Replace(path, "\\", "/");
  return fs::path(std::u8string(native.begin(), native.end()));
}

bool IsWriteProtected(const fs::path& path) {
  std::error_code error;
  const fs::perms permissions = fs::status(path, error).permissions();
  return !error && (permissions & fs::perms::owner_write) == fs::perms::none;
}

bool IsFile(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::exists(status) && !fs::is_directory(status);
}

[[noreturn]] void Fail(const std::error_code& error) {
  if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
      error == std::errc::read_only_file_system || error == std::errc::device_or_resource_busy) {
    throw MakeFailure(environment::kPermissionDenied);
  }
  if (error == std::errc::no_space_on_device) throw MakeFailure(environment::kDiskFull);
  if (error == std::errc::no_such_file_or_directory) throw MakeFailure(environment::kFileNotFound);
  throw MakeFailure(environment::kPathAccess);
}

void RequireFolderOf(const fs::path& path) {
  std::error_code error;
  const fs::path folder = path.parent_path();
  if (!folder.empty() && !fs::is_directory(folder, error)) throw MakeFailure(environment::kPathNotFound);
}

void RequireFile(const fs::path& path) {
  RequireFolderOf(path);
  if (!IsFile(path)) throw MakeFailure(environment::kFileNotFound);
}

void RequireReplaceable(const fs::path& target, bool overwrite) {
  std::error_code error;
  if (fs::is_directory(target, error)) throw MakeFailure(environment::kPermissionDenied);
  if (!fs::exists(target, error)) return;
  if (!overwrite) throw MakeFailure(environment::kFileExists);
  // Asked for here since an administrator may write to a protected file all the same.
  if (IsWriteProtected(target)) throw MakeFailure(environment::kPermissionDenied);
  // A file of somebody else, in a folder that anybody may write to.
  if (!std::ofstream(target, std::ios::app)) throw MakeFailure(environment::kPermissionDenied);
}

}  // namespace

bool LocalFiles::FileExists(const std::string& path) const {
  try {
    return IsFile(PathOf(path));
  } catch (const std::exception&) {
    return false;
  }
}

void LocalFiles::DeleteFile(const std::string& path, bool force) {
  const fs::path file = PathOf(path);
  RequireFile(file);
  std::error_code error;
  if (IsWriteProtected(file)) {
    if (!force) throw MakeFailure(environment::kPermissionDenied);
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add, error);
  }
  fs::remove(file, error);
  if (error) Fail(error);
}

void LocalFiles::CopyFile(const std::string& source, const std::string& target, bool overwrite) {
  const fs::path from = PathOf(source);
  const fs::path to = PathOf(target);
  RequireFile(from);
  RequireFolderOf(to);
  RequireReplaceable(to, overwrite);
  std::error_code error;
  if (fs::equivalent(from, to, error)) throw MakeFailure(environment::kPermissionDenied);

  // Copied beside the target and put in its place at once: a copy that fails half way leaves the
  // old file as it was. Where the folder takes no second file the target itself is written.
  fs::path half = to;
  half += ".part";
  const bool beside = std::ofstream(half).good();
  const fs::path& copy = beside ? half : to;
  if (!beside) std::ofstream(to, std::ios::app).close();
  // The rights are those of the replaced file, or of any new one: a source that nobody else may read, or
  // nobody may write, must not make such a copy.
  const fs::perms rights = fs::status(fs::exists(to, error) ? to : half, error).permissions();
  fs::copy_file(from, copy, fs::copy_options::overwrite_existing, error);
  if (!error) fs::permissions(copy, rights, error);
  if (!error && beside) fs::rename(half, to, error);
  if (!error) return;
  std::error_code ignored;
  if (beside) fs::remove(half, ignored);
  Fail(error);
}

std::uint64_t LocalFiles::FileLen(const std::string& path) const {
  const fs::path file = PathOf(path);
  RequireFile(file);
  std::error_code error;
  const std::uint64_t size = fs::file_size(file, error);
  if (error) Fail(error);
  return size;
}

}  // namespace dossierkit::files
