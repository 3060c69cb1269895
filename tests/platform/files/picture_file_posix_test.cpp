// Reading a picture while the disk fails, and what is no regular file.
#ifndef _WIN32

#include <sys/stat.h>

#include <cerrno>

#include "platform/files/picture_file.h"
#include "tests/platform/files/folder.h"
#include "tests/platform/files/other_user.h"
#include "tests/platform/files/system_calls.h"
#include "tests/support/jpeg.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;
using tests::ProgressiveJpeg;

class PictureFileOnDisk : public FolderTest {
 protected:
  int NumberOf(const std::string& name) {
    return NumberOfFailure([&] { ReadPictureFile(Path(name)); });
  }
};

// Only the size is looked at: forty gigabytes take no time and no memory.
TEST_F(PictureFileOnDisk, OfMoreThan32MebibytesIsNotRead) {
  Write("a.jpg", "\xFF\xD8");
  for (const std::uintmax_t size : {std::uintmax_t{33554433}, std::uintmax_t{40} << 30}) {
    fs::resize_file(folder_ / "a.jpg", size);
    const SystemCalls watch([](const std::string& name, std::size_t) { return name == "read" ? EIO : 0; });
    EXPECT_EQ(NumberOf("a.jpg"), 481) << size;
  }
}

TEST_F(PictureFileOnDisk, ThatIsNoneIsNotFound) {
  ASSERT_EQ(mkfifo((folder_ / "pipe.jpg").c_str(), 0600), 0);
  fs::create_symlink("pipe.jpg", folder_ / "link.jpg");
  fs::create_symlink("nowhere", folder_ / "broken.jpg");
  fs::create_directory(folder_ / "folder.jpg");
  for (const char* name : {"pipe.jpg", "link.jpg", "broken.jpg", "folder.jpg", "none.jpg", "none\\a.jpg"}) {
    EXPECT_EQ(NumberOf(name), 53) << name;
  }
}

TEST_F(PictureFileOnDisk, ThatIsCutWhileItIsReadHasTheBytesThatAreThere) {
  Write("a.jpg", ProgressiveJpeg(64, 64, 3));
  const SystemCalls watch([&](const std::string& name, std::size_t) {
    if (name == "read") fs::resize_file(folder_ / "a.jpg", 2);
    return 0;
  });
  EXPECT_EQ(ReadPictureFile(Path("a.jpg")), (std::vector<unsigned char>{0xFF, 0xD8}));
}

TEST_F(PictureFileOnDisk, ThatCannotBeReadIsToldAsItIs) {
  Write("a.jpg", "\xFF\xD8");
  for (const auto& [number, told] : {std::pair{EACCES, 70}, {EIO, 75}}) {
    const int failure = number;
    for (const char* call : {"open", "read"}) {
      const SystemCalls watch(
          [&](const std::string& name, std::size_t) { return name == call ? failure : 0; });
      EXPECT_EQ(NumberOf("a.jpg"), told) << call;
    }
  }
  if (geteuid() != 0) GTEST_SKIP() << "only an administrator can be another user";
  Allow("a.jpg", 0600);
  EXPECT_EQ(As({65011, {65011}}, [&] { return NumberOf("a.jpg"); }), 70);
}

}  // namespace
}  // namespace dossierkit::files

#endif
