// The photographs of a folder.
#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

#include "host/check/reading.h"
#include "platform/environment/failure.h"
#include "platform/files/picture_file.h"

namespace dossierkit::check {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestChosen = 307200;  // bytes, in the dialog

bool IsPicture(const std::string& path) {
  try {
    const auto bytes = files::ReadPictureFile(path);
    return files::CountPicture(bytes).pixels > 0;
  } catch (const environment::Failure&) {
    return false;
  }
}

// The files in the order of their names.
std::vector<fs::path> PhotosIn(const std::string& folder) {
  std::error_code error;
  std::vector<fs::path> files;
  const std::u8string name(folder.begin(), folder.end());
  for (fs::directory_iterator entry(fs::path(name), error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    if (entry->path().extension() == ".jpg") files.push_back(entry->path());
  }
  if (error) {
    throw environment::Failure(environment::kPathNotFound, "无法读取照片文件夹 " + folder + "（" +
                                                               error.message() + "），请检查路径和权限。");
  }
  std::ranges::sort(files);
  return files;
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

std::vector<Fault> CheckPhotos(ado::Connection& connection, const std::string& folder) {
  const auto files = PhotosIn(folder);
  const ado::Snapshot rows = Read(connection, "select A00 from A01");
  std::set<std::string> persons;
  for (std::size_t row = 0; row < rows.RowCount(); ++row) persons.insert(TextAt(rows, row, 0));
  std::vector<Fault> faults;
  for (const fs::path& file : files) {
    const std::string name = Utf8(file.filename());
    const auto add = [&](const std::string& text) {
      faults.push_back({"", name, "", "照片 " + name + "：" + text + "。"});
    };
    if (!persons.contains(Utf8(file.stem()))) {
      add("人员中没有这个标识（大小写也须一致），谁也看不到这张照片；请改正文件名，或删除这个文件");
      continue;
    }
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (!IsPicture(Utf8(file))) {
      add("读不出图片，一打开此人的窗口就会关闭（提示“无效图片”或文件错误）；请换成 JPEG "
          "照片，并检查文件的权限");
    } else if (!error && size > kLargestChosen) {
      add("有 " + std::to_string(size) + " 字节，超过 307200 字节，在窗口中无法再选用，打开也慢；请缩小照片");
    }
  }
  return faults;
}

}  // namespace dossierkit::check
