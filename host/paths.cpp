#include "host/paths.h"

#include <random>
#include <system_error>

#include "host/system.h"
#include "platform/environment/failure.h"

namespace dossierkit::host {

namespace fs = std::filesystem;

fs::path PathOf(const std::string& text) { return std::u8string(text.begin(), text.end()); }

std::string TextOf(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path SampleDatabase() { return ShareFolder() / "sample.db"; }

fs::path EmptyDatabase() { return ShareFolder() / "empty.db"; }

fs::path SamplePhotos() { return ShareFolder() / "photos"; }

fs::path DataFolder() {
  fs::path folder = DataHome() / "dossierkit";
  // Dossiers are nobody else's business.
  std::error_code error;
  if (fs::create_directories(folder, error)) fs::permissions(folder, fs::perms::owner_all, error);
  return folder;
}

fs::path WorkingPhotos() {
  fs::path working = DataFolder() / "photos";
  std::error_code error;
  if (fs::exists(working, error)) return working;
  // All of them or none: a folder that is there is not filled again.
  const fs::path begun = DataFolder() / ("photos." + std::to_string(std::random_device()()));
  try {
    CopyPhotos(SamplePhotos(), begun);
  } catch (const environment::Failure&) {
    fs::remove_all(begun, error);
    throw;
  }
  fs::rename(begun, working, error);
  if (error) fs::remove_all(begun, error);  // another program was faster
  return working;
}

void CopyPhotos(const fs::path& from, const fs::path& to) {
  try {
    fs::create_directories(to);
    for (const auto& entry : fs::directory_iterator(from)) {
      const fs::path copy = to / entry.path().filename();
      std::error_code error;
      fs::copy_file(entry.path(), copy, fs::copy_options::skip_existing, error);
      // Another program may just have copied it.
      if (error && error != std::errc::file_exists) throw fs::filesystem_error({}, copy, error);
      fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
    }
  } catch (const fs::filesystem_error& error) {
    throw environment::Failure(environment::kPathAccess, "无法复制示例照片到 " + TextOf(to) + "（" +
                                                             error.code().message() +
                                                             "），请用 --photos 指定照片所在的文件夹。");
  }
}

fs::path WorkingDatabase() {
  fs::path working = DataFolder() / "dossier.db";
  std::error_code error;
  if (!fs::exists(working, error)) CreateSample(working);
  return working;
}

[[noreturn]] static void RefuseToMake(const std::string& what, const fs::path& target,
                                      const std::string& why) {
  throw environment::Failure(environment::kPathAccess,
                             "无法建立" + what + " " + TextOf(target) + "（" + why + "），请换一个位置。");
}

void RequireNoFile(const std::string& what, const fs::path& target) {
  std::error_code error;
  // What an earlier database left beside it may hold its last changes, and must not be taken for this one's.
  for (const char* ending : {"", "-wal", "-shm", "-journal"}) {
    const fs::path present = fs::path(target) += ending;
    if (fs::symlink_status(present, error).type() != fs::file_type::not_found)
      RefuseToMake(what, target, "已有文件 " + TextOf(present));
  }
}

static void CreateFrom(const fs::path& source, const std::string& what, const fs::path& target) {
  RequireNoFile(what, target);
  std::error_code error;
  if (!fs::copy_file(source, target, error)) {
    std::error_code ignored;
    // Half of one would be taken for a database. What somebody else has just made stays.
    if (error != std::errc::file_exists) fs::remove(target, ignored);
    RefuseToMake(what, target, error.message());
  }
  fs::permissions(target, fs::perms::owner_write, fs::perm_options::add, error);
}

void CreateSample(const fs::path& target) { CreateFrom(SampleDatabase(), "示例数据库", target); }

void CreateEmpty(const fs::path& target) { CreateFrom(EmptyDatabase(), "空数据库", target); }

}  // namespace dossierkit::host
