// The program as its users start it: exit codes, standard output and error.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/ado/recordset.h"
#include "tests/support/offscreen_complaints.h"
#include "tests/support/paths.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

struct Outcome {
  int code;
  std::string out;
  std::string error;
};

std::string Read(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

// The lines of an output but for what Qt says without a screen.
std::string Complaints(const std::string& error) {
  std::istringstream lines(error);
  std::string complaints;
  for (std::string line; std::getline(lines, line);) {
    if (!kOffscreenComplaints.contains(line)) complaints += line + "\n";
  }
  return complaints;
}

class Program : public testing::Test {
 protected:
  Program() { fs::create_directories(folder_); }
  ~Program() override { fs::remove_all(folder_); }

  Outcome Run(const std::string& arguments, const std::string& before = {}) {
    const fs::path out = folder_ / "out";
    const fs::path error = folder_ / "error";
    const std::string command = before + DossierProgram() + " " + arguments + " >'" + out.string() + "' 2>'" +
                                error.string() + "' </dev/null";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), Read(out), Read(error)};
  }
  fs::path In(const std::string& name) const { return folder_ / name; }

 private:
  fs::path folder_ = fs::temp_directory_path() / ("dossier-program-" + std::to_string(getpid()));
};

TEST_F(Program, HelpAndVersionGoToStandardOutput) {
  const Outcome help = Run("--help");
  EXPECT_EQ(help.code, 0);
  EXPECT_NE(help.out.find("usage: dossier"), std::string::npos);
  const Outcome version = Run("--version");
  EXPECT_EQ(version.code, 0);
  EXPECT_EQ(version.out, "dossier 7.0.0\n");
}

TEST_F(Program, WrongArgumentsPrintTheUsageAndExitWithTwo) {
  const Outcome outcome = Run("--nonsense");
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.error.find("unknown argument '--nonsense'"), std::string::npos);
  EXPECT_NE(outcome.error.find("usage: dossier"), std::string::npos);
}

TEST_F(Program, CreateSampleWritesAFreshDatabase) {
  const Outcome outcome = Run("create-sample '" + In("s.db").string() + "'");
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  sqlite::SqliteConnection database(In("s.db").string());
  EXPECT_EQ(One(database, "select count(*) from A01"), "12");
}

TEST_F(Program, CreateSampleWhereNothingCanBeWrittenSaysSo) {
  const Outcome outcome = Run("create-sample '" + In("no such folder/s.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法建立示例数据库"), std::string::npos) << outcome.error;
}

TEST_F(Program, PhotographsThatCannotBeCopiedAreToldAndExitWithOne) {
  std::ofstream(In("photos")) << "a file where the folder should be";
  const Outcome outcome = Run("--tour '" + In("").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法复制示例照片到 " + In("photos").string()), std::string::npos)
      << outcome.error;
}

TEST_F(Program, WithoutADisplayItSaysWhatToDo) {
  const Outcome outcome = Run("--new", "env -u DISPLAY -u QT_QPA_PLATFORM ");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("QT_QPA_PLATFORM=vnc"), std::string::npos) << outcome.error;
}

TEST_F(Program, AMissingDatabaseIsNamedWithWhatToDo) {
  const Outcome outcome = Run("--new --database '" + In("none.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("数据库文件不存在"), std::string::npos) << outcome.error;
  EXPECT_NE(outcome.error.find("create-sample"), std::string::npos) << outcome.error;
}

TEST_F(Program, AFileThatIsNoDatabaseIsNamed) {
  std::ofstream(In("text.db")) << std::string(4096, 'x');
  const Outcome outcome = Run("--new --database '" + In("text.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法打开数据库"), std::string::npos) << outcome.error;
}

TEST_F(Program, ASchemaThatLacksATableIsNamed) {
  Run("create-sample '" + In("s.db").string() + "'");
  sqlite::SqliteConnection(In("s.db").string()).RunScript("drop table s_infoitem");
  const Outcome outcome = Run("--new --database '" + In("s.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("s_infoitem"), std::string::npos) << outcome.error;
}

TEST_F(Program, AConnectionStringOfAnotherEngineIsRefused) {
  const Outcome outcome = Run("--new --connection 'Driver=Other;Database=x'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("连接字符串"), std::string::npos) << outcome.error;
}

TEST_F(Program, TheTourPlaysToItsEnd) {
  const Outcome outcome =
      Run("--tour '" + In("tour").string() + "' --trace-sql '" + In("trace.json").string() + "'",
          "QT_FORCE_STDERR_LOGGING=1 ");
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  EXPECT_EQ(Complaints(outcome.error), "");
  EXPECT_NE(outcome.out.find("01 新增人员"), std::string::npos);
  EXPECT_TRUE(fs::exists(In("tour/01.png")));
  EXPECT_TRUE(fs::exists(In("tour/32.png")));
  const std::string trace = Read(In("trace.json"));
  EXPECT_NE(trace.find(R"("sql":"SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp")"),
            std::string::npos);
}

}  // namespace
}  // namespace dossierkit::tests
