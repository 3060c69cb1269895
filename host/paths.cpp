#include "host/paths.h"

#include <system_error>

#include "platform/environment/failure.h"

namespace dossierkit::host {

namespace fs = std::filesystem;

fs::path ProgramFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

fs::path SampleDatabase() { return ProgramFolder().parent_path() / "share" / "sample.db"; }

fs::path WorkingPhotos() { return ProgramFolder().parent_path() / "var" / "photos"; }

fs::path WorkingDatabase() {
  const fs::path working = ProgramFolder().parent_path() / "var" / "dossier.db";
  std::error_code error;
  fs::create_directories(working.parent_path(), error);
  if (!fs::exists(working)) CreateSample(working);
  return working;
}

void CreateSample(const fs::path& target) {
  std::error_code error;
  // What an earlier database left beside it must not be taken for this one's.
  fs::remove(fs::path(target) += "-wal", error);
  fs::remove(fs::path(target) += "-shm", error);
  fs::copy_file(SampleDatabase(), target, fs::copy_options::overwrite_existing, error);
  if (error) {
    throw environment::Failure(
        environment::kPathAccess,
        "无法建立示例数据库 " + target.string() + "（" + error.message() + "），请换一个可以写入的位置。");
  }
  fs::permissions(target, fs::perms::owner_write, fs::perm_options::add, error);
}

}  // namespace dossierkit::host
