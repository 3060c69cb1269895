// What the check says of a folder of photographs.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/environment/failure.h"
#include "tests/check/check_test.h"
#include "tests/support/named_file.h"
#include "tests/support/paths.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

class CheckedPhotos : public Check {
 protected:
  CheckedPhotos() { fs::copy(SourceFolder() + "/data/photos", folder_); }
  ~CheckedPhotos() override { fs::remove_all(folder_); }

  Texts Told() { return TextsOf(check::CheckPhotos(*database, folder_.string())); }
  fs::path Of(const std::string& person) const { return folder_ / NamedFile(person + ".jpg"); }

  fs::path folder_ = fs::temp_directory_path() / ("check-photos-" + std::to_string(getpid()));
};

TEST_F(CheckedPhotos, OfTheSampleHaveNoFault) {
  std::ofstream(folder_ / "README.txt") << "no photograph";
  EXPECT_EQ(Told(), Texts{});
}

TEST_F(CheckedPhotos, ThatAreTooLargeAreTold) {
  std::ofstream(Of(kPerson), std::ios::app | std::ios::binary)
      << std::string(307201 - fs::file_size(Of(kPerson)), ' ');
  EXPECT_EQ(Told(),
            Texts{"照片 " + kPerson +
                  ".jpg：有 307201 字节，超过 307200 字节，在窗口中无法再选用，打开也慢；请缩小照片。"});
  fs::resize_file(Of(kPerson), 307200);
  EXPECT_EQ(Told(), Texts{});
}

TEST_F(CheckedPhotos, ThatAreNoPictureAreTold) {
  std::ofstream(Of(kPerson)) << "no picture";
  EXPECT_EQ(Told(), Texts{"照片 " + kPerson +
                          ".jpg：读不出图片，一打开此人的窗口就会关闭（提示“无效图片”或文件错误）；"
                          "请换成 JPEG 照片，并检查文件的权限。"});
}

TEST_F(CheckedPhotos, OfNobodyAreTold) {
  // By way of another name: where case does not matter a name of the same letters is no other.
  fs::rename(Of(kPerson), Of("x"));
  fs::rename(Of("x"), Of("47eaa099-2cb6-416d-a6dc-283cf0480ff9"));
  std::ofstream(Of("张三")) << "no picture either";
  EXPECT_EQ(Told(),
            (Texts{"照片 47eaa099-2cb6-416d-a6dc-283cf0480ff9.jpg：人员中没有这个标识（大小写也须一致），"
                   "谁也看不到这张照片；请改正文件名，或删除这个文件。",
                   "照片 张三.jpg：人员中没有这个标识（大小写也须一致），"
                   "谁也看不到这张照片；请改正文件名，或删除这个文件。"}));
}

TEST_F(CheckedPhotos, WithoutAFolderAreAFailure) {
  EXPECT_THROW(check::CheckPhotos(*database, (folder_ / "none").string()), environment::Failure);
}

}  // namespace
}  // namespace dossierkit::tests
