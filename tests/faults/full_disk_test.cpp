// A server whose disk is full.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/environment/text.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

// Takes all room on a disk but `left` bytes for as long as it lives.
class Ballast {
 public:
  Ballast(const fs::path& folder, std::uintmax_t left) : file_(folder / "ballast") {
    std::ofstream out(file_, std::ios::binary);
    const std::string block(65536, 'x');
    while (out && fs::space(folder).available > left + block.size()) out << block << std::flush;
  }
  ~Ballast() { fs::remove(file_); }
  Ballast(const Ballast&) = delete;
  Ballast& operator=(const Ballast&) = delete;

 private:
  fs::path file_;
};

TEST(FullDisk, IsToldAndSavingWorksOnceThereIsRoomAgain) {
  if (std::getenv("DOSSIERKIT_SMALL_DISK") == nullptr)
    GTEST_SKIP() << "only root can have a small disk of its own";
  const std::string engine = ServerOfThisRun();
  MakeDatabase(engine, "small_disk");
  const auto host = OpenServer(engine, "small_disk");
  host->RunNative(engine == "postgresql" ? "create table t (n integer primary key, a text)"
                                         : "create table t (n integer primary key, a mediumtext)");
  const fs::path folder = environment::TextOf(
      host->RunNative(engine == "postgresql" ? "show data_directory" : "select @@datadir").ValueAt(0, 0));
  // What no compression makes small.
  std::string text;
  for (unsigned i = 0, x = 1; i < 30000; ++i)
    text += static_cast<char>('A' + ((x = x * 1103515245 + 12345) >> 16) % 58);
  int saved = 0;
  const auto save = [&] {
    host->Run("insert into t(n,a) values('" + std::to_string(saved + 1) + "','" + text + "')");
    ++saved;
  };
  {
    const Ballast ballast(folder, 2'000'000);
    std::string told;
    for (int i = 0; i < 1000 && told.empty(); ++i) told = Told(save);
    if (engine == "postgresql") {
      EXPECT_EQ(told, "磁盘已满。");
      EXPECT_EQ(One(*host, "select count(*) from t"), std::to_string(saved)) << "it can still be read";
    } else {
      // Where there is no room to take the row back either, this server ends itself.
      EXPECT_TRUE(told == "磁盘已满。" || told.starts_with(kLost)) << told;
    }
    EXPECT_GT(saved, 10);
  }
  ASSERT_TRUE(WaitUntil([&] { return Answers(ServerString(engine, "small_disk")); }));
  EXPECT_EQ(One(*host, "select count(*) from t"), std::to_string(saved)) << "what was reported saved";
  save();
  EXPECT_EQ(One(*host, "select count(*) from t"), std::to_string(saved));
  EXPECT_EQ(One(*host, "select count(*) from t where a='" + text + "'"), std::to_string(saved));
}

}  // namespace
}  // namespace dossierkit::tests
