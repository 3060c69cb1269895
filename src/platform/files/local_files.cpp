#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/files/disk.h"
#include "platform/files/files.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;

using environment::MakeFailure;

constexpr std::size_t kBlock = 65536;

bool IsRefusal(const std::error_code& error) {
  return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
         error == std::errc::read_only_file_system || error == std::errc::device_or_resource_busy;
}

// Does the work, and tells a failure of the disk as the environment words it.
template <typename Work>
auto Told(Work work) {
  try {
    return work();
  } catch (const std::system_error& failure) {
    throw FailureOf(failure.code());
  }
}

void RequireFolderOf(const fs::path& path) {
  const fs::path folder = path.parent_path();
  if (!folder.empty() && !fs::is_directory(folder)) throw MakeFailure(environment::kPathNotFound);
}

void RequireFile(const fs::path& path) {
  if (fs::is_regular_file(path)) return;
  RequireFolderOf(path);
  throw MakeFailure(environment::kFileNotFound);
}

bool IsWriteProtected(const fs::file_status& status) {
  return (status.permissions() & fs::perms::owner_write) == fs::perms::none;
}

// The file that a copy replaces, or none: where there is none, or a link, which has no rights of its own.
std::optional<OpenFile> RequireReplaceable(const fs::path& from, const fs::path& to, bool overwrite) {
  const fs::file_status status = fs::symlink_status(to);
  if (!fs::exists(status)) return std::nullopt;
  if (!overwrite) throw MakeFailure(environment::kFileExists);
  if (IsLink(to)) return std::nullopt;
  if (!fs::is_regular_file(status) || fs::equivalent(from, to)) {
    throw MakeFailure(environment::kPermissionDenied);
  }
  // Asked for here since an administrator may write to a protected file all the same.
  if (IsWriteProtected(status)) throw MakeFailure(environment::kPermissionDenied);
  // In a folder that anybody may write to, the rename would replace what only its owner may write to.
  return OpenFile::ToReplace(to);
}

void CopyBytes(const OpenFile& from, OpenFile& to, std::uint64_t size) {
  std::vector<char> block(kBlock);
  for (std::uint64_t done = 0; done < size;) {
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, size - done));
    const std::size_t count = from.Read(done, {block.data(), wanted});
    // The source was cut meanwhile: half of it is no copy.
    if (count != wanted) throw std::system_error(std::make_error_code(std::errc::io_error));
    to.Write(done, {block.data(), count});
    done += count;
  }
}

// A new file beside the target, until it stands in the target's place; else it goes with the object.
class FileBeside {
 public:
  explicit FileBeside(const fs::path& target)
      : target_(target), file_(OpenFile::Create(target.parent_path(), name_)) {}
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;
  ~FileBeside() {
    std::error_code ignored;
    if (!in_place_) fs::remove(name_, ignored);
  }
  OpenFile& File() { return file_; }
  void TakeThePlace() {
    RenameOver(name_, target_);
    in_place_ = true;
    FlushFolder(target_.parent_path());
  }

 private:
  const fs::path& target_;
  fs::path name_;
  OpenFile file_;
  bool in_place_ = false;
};

// The target is the old file or the whole copy at every moment.
void Replace(const OpenFile& from, const fs::path& to, std::optional<OpenFile> old) {
  FileBeside beside(to);
  if (old) beside.File().TakeRightsOf(*old);
  // Not every system replaces a file that is open.
  old.reset();
  CopyBytes(from, beside.File(), from.Size());
  beside.File().Flush();
  beside.TakeThePlace();
}

// Does the work; a disk that takes nothing any more is passed over.
template <typename Work>
void Try(Work work) {
  try {
    work();
  } catch (const std::system_error&) {
    // What the user is told is the first failure.
  }
}

void PutBack(OpenFile& file, const std::vector<char>& bytes, std::uint64_t size) {
  Try([&] { file.Write(0, bytes); });
  Try([&] { file.Cut(size); });
  Try([&] { file.Flush(); });
}

// Writes over the old file. Whatever fails, the bytes that were there are put back.
void Rewrite(const OpenFile& from, const fs::path& to) {
  OpenFile file = OpenFile::ToRewrite(to);
  const std::uint64_t old_size = file.Size();
  const std::uint64_t size = from.Size();
  std::vector<char> held(static_cast<std::size_t>(std::min(old_size, size)));
  if (file.Read(0, held) != held.size()) throw MakeFailure(environment::kPathAccess);
  try {
    file.Reserve(size);
    CopyBytes(from, file, size);
    file.Flush();
    file.Cut(size);
  } catch (...) {
    PutBack(file, held, old_size);
    throw;
  }
  // The copy is on the disk; at worst a part of the old file follows it there.
  Try([&] { file.Flush(); });
}

}  // namespace

environment::Failure FailureOf(const std::error_code& error) {
  if (IsRefusal(error)) return MakeFailure(environment::kPermissionDenied);
  if (error == std::errc::no_space_on_device) return MakeFailure(environment::kDiskFull);
  if (error == std::errc::no_such_file_or_directory) return MakeFailure(environment::kFileNotFound);
  return MakeFailure(environment::kPathAccess);
}

std::filesystem::path PathOf(const std::string& path) {
  const std::string native = environment::Replace(path, "\\", "/");
  return fs::path(std::u8string(native.begin(), native.end()));
}

bool LocalFiles::FileExists(const std::string& path) const {
  try {
    return fs::is_regular_file(PathOf(path));
  } catch (const std::exception&) {
    return false;
  }
}

void LocalFiles::DeleteFile(const std::string& path, bool force) {
  Told([&] {
    const fs::path file = PathOf(path);
    RequireFile(file);
    if (!force && IsWriteProtected(fs::symlink_status(file))) {
      throw MakeFailure(environment::kPermissionDenied);
    }
    RemoveFile(file);
  });
}

void LocalFiles::CopyFile(const std::string& source, const std::string& target, bool overwrite) {
  Told([&] {
    const fs::path from = PathOf(source);
    const fs::path to = PathOf(target);
    RequireFile(from);
    const OpenFile bytes = OpenFile::ToRead(from);
    RequireFolderOf(to);
    std::optional<OpenFile> old = RequireReplaceable(from, to, overwrite);
    const bool is_there = old.has_value();
    try {
      Replace(bytes, to, std::move(old));
    } catch (const std::system_error& failure) {
      // The folder takes no second file, has no room for one, or lets nobody replace it.
      const bool nothing_beside =
          IsRefusal(failure.code()) || failure.code() == std::errc::no_space_on_device;
      if (!is_there || !nothing_beside) throw;
      Rewrite(bytes, to);
    }
  });
}

std::uint64_t LocalFiles::FileLen(const std::string& path) const {
  return Told([&] {
    const fs::path file = PathOf(path);
    RequireFile(file);
    return static_cast<std::uint64_t>(fs::file_size(file));
  });
}

}  // namespace dossierkit::files
