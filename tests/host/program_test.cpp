// The program as its users start it: exit codes, standard output and error.
#include "tests/support/program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "adapters/sqlite/sqlite_connection.h"
#include "platform/ado/recordset.h"
#include "tests/support/offscreen_complaints.h"
#include "tests/support/page_blocks.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

// The lines of an output but for what Qt says without a screen.
std::string Complaints(const std::string& error) {
  std::istringstream lines(error);
  std::string complaints;
  for (std::string line; std::getline(lines, line);) {
    if (!kOffscreenComplaints.contains(line)) complaints += line + "\n";
  }
  return complaints;
}

// A photograph that is no picture ends the visit, with nobody at the keyboard.
void PutBadPhotograph(const fs::path& folder) {
  fs::create_directories(folder);
  std::ofstream(folder / (kPerson + ".jpg")) << "no picture";
}

class Program : public testing::Test {
 protected:
  Program() { fs::create_directories(folder_); }
  ~Program() override { fs::remove_all(folder_); }

  Outcome Run(const std::string& arguments, const std::string& before = {}) {
    return RunProgram(folder_, arguments, before);
  }
  fs::path In(const std::string& name) const { return folder_ / name; }

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
  EXPECT_EQ(outcome.error, R"(dossier: unknown argument '--nonsense'
usage: dossier [--database FILE | --connection STRING] [--photos DIR]
               [--person ID | --new] [--operation-type N] [--person-type N]
               [--own-rows] [--clerk NAME] [--trace-sql FILE] [--tour DIR]
'dossier --help' says more.
)");
}

TEST_F(Program, WrongArgumentsOfACommandPrintItsOwnUsage) {
  EXPECT_EQ(Run("check --new").error,
            R"(dossier: check takes a file, --database, --connection, --photos and --json
usage: dossier check [FILE | --database FILE | --connection STRING] [--photos DIR] [--json]
'dossier --help' says more.
)");
  EXPECT_EQ(Run("create-empty").error, R"(dossier: create-empty takes a value
usage: dossier create-empty FILE | --connection STRING
'dossier --help' says more.
)");
}

TEST_F(Program, CheckTakesItsDatabaseAsAFile) {
  Run("create-empty '" + In("e.db").string() + "'");
  sqlite::SqliteConnection(In("e.db").string()).RunScript("drop table S_GUID");
  const Outcome outcome = Run("check '" + In("e.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out,
            "表 S_GUID：没有这张表，窗口打不开；请照 dossier create-empty 建立的空数据库补上。\n");
}

TEST_F(Program, CreateSampleWritesAFreshDatabase) {
  const Outcome outcome = Run("create-sample '" + In("s.db").string() + "'");
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  sqlite::SqliteConnection database(In("s.db").string());
  EXPECT_EQ(One(database, "select count(*) from A01"), "12");
}

TEST_F(Program, CreateSampleRefusesAFileThatIsThere) {
  for (const char* ending : {"", "-wal", "-shm", "-journal"}) {
    std::ofstream(In(std::string("s.db") + ending)) << "mine";
    const Outcome outcome = Run("create-sample '" + In("s.db").string() + "'");
    EXPECT_EQ(outcome.code, 1) << ending;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "dossier: 无法建立示例数据库 " + In("s.db").string() + "（已有文件 " +
                                 In(std::string("s.db") + ending).string() + "），请换一个位置。\n");
    EXPECT_EQ(Read(In(std::string("s.db") + ending)), "mine");
    fs::remove(In(std::string("s.db") + ending));
  }
}

// As on a full disk.
TEST_F(Program, ADatabaseThatCannotBeWrittenWholeIsNotThere) {
  const Outcome outcome = Run("create-sample '" + In("s.db").string() + "'", "trap '' XFSZ; ulimit -f 100; ");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法建立示例数据库 " + In("s.db").string()), std::string::npos)
      << outcome.error;
  EXPECT_FALSE(fs::exists(In("s.db")));
}

TEST_F(Program, CreateSampleRefusesALinkThatLeadsNowhere) {
  fs::create_symlink("nowhere.db", In("s.db"));
  EXPECT_EQ(Run("create-sample '" + In("s.db").string() + "'").error,
            "dossier: 无法建立示例数据库 " + In("s.db").string() + "（已有文件 " + In("s.db").string() +
                "），请换一个位置。\n");
  EXPECT_TRUE(fs::is_symlink(In("s.db")));
  EXPECT_FALSE(fs::exists(In("nowhere.db")));
}

TEST_F(Program, CreateEmptyWritesTheSameDatabaseWithoutPeople) {
  const Outcome outcome = Run("create-empty '" + In("e.db").string() + "'");
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  EXPECT_EQ(outcome.out, "");
  const auto sample = SampleDatabase();
  sqlite::SqliteConnection database(In("e.db").string());
  const auto tables = Column(*sample, "select name from sqlite_master where type='table' order by name");
  ASSERT_EQ(tables.size(), 40U);
  EXPECT_EQ(Rows(database, "select type,name,sql from sqlite_master order by name"),
            Rows(*sample, "select type,name,sql from sqlite_master order by name"));
  const auto sets = Column(*sample, "select tblname from s_infotable");
  for (const std::string& table : tables) {
    const bool of_people = std::find(sets.begin(), sets.end(), table) != sets.end();
    EXPECT_EQ(One(database, "select count(*) from " + table),
              of_people ? "0" : One(*sample, "select count(*) from " + table))
        << table;
  }
}

TEST_F(Program, CreateTakesAFileByItsConnectionString) {
  for (const std::string command : {"create-sample", "create-server", "create-empty"}) {
    const std::string file = In(command + ".db").string();
    const Outcome outcome = Run(command + " --connection 'Driver=SQLite3;Database=" + file + "'");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    sqlite::SqliteConnection database(file);
    EXPECT_EQ(One(database, "select count(*) from A01"), command == "create-empty" ? "0" : "12");
  }
}

TEST_F(Program, CreateEmptyRefusesAFileThatIsThere) {
  std::ofstream(In("e.db-wal")) << "mine";
  const Outcome outcome = Run("create-empty '" + In("e.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.error, "dossier: 无法建立空数据库 " + In("e.db").string() + "（已有文件 " +
                               In("e.db-wal").string() + "），请换一个位置。\n");
  EXPECT_EQ(Read(In("e.db-wal")), "mine");
  EXPECT_FALSE(fs::exists(In("e.db")));
}

TEST_F(Program, CheckSaysNothingOfTheSample) {
  Run("create-sample '" + In("s.db").string() + "'");
  const std::string before = Read(In("s.db"));
  const Outcome outcome =
      Run("check --database '" + In("s.db").string() + "' --photos '" + SourceFolder() + "/data/photos'",
          "env -u DISPLAY -u QT_QPA_PLATFORM ");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(Read(In("s.db")) == before);
}

TEST_F(Program, CheckOfTheWorkingCopyHasItsPhotographs) {
  const std::string before = "XDG_DATA_HOME='" + In("data").string() + "' ";
  EXPECT_EQ(Run("check", before).code, 0);
  PutBadPhotograph(In("data/dossierkit/photos"));
  const Outcome outcome = Run("check", before);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "照片 " + kPerson +
                             ".jpg：读不出图片，一打开此人的窗口就会关闭（提示“无效图片”或文件错误）；"
                             "请换成 JPEG 照片，并检查文件的权限。\n");
}

TEST_F(Program, WithoutAHomeTheWorkingCopiesLieInTheUsersOwn) {
  const Outcome outcome =
      RunProgram(folder_, "check", "cd '" + folder_.string() + "' && env -u XDG_DATA_HOME -u HOME ");
  EXPECT_EQ(outcome.code, 0) << outcome.out << outcome.error;
  EXPECT_FALSE(fs::exists(In(".local")));
}

TEST_F(Program, CheckTellsEachFaultOnALineAndExitsWithOne) {
  Run("create-sample '" + In("s.db").string() + "'");
  sqlite::SqliteConnection(In("s.db").string())
      .RunScript(
          "update s_infoitem set FldWidth='宽' where itemname='A0302'; delete from s_CodeLevDefine "
          "where dmgrp='LCCYJS'");
  const std::string check = "check --connection 'Driver=SQLite3;Database=" + In("s.db").string() + "'";
  const Outcome outcome = Run(check);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out,
            "表 s_infoitem，行 A03.A0302，列 FldWidth：“宽”不是 16 位整数，一打开“工作经历”，窗口就会关闭；"
            "请改为 0（不显示）至 32767 的整数。\n"
            "表 s_CodeLevDefine，行 LCCYJS：没有一行，选择代码的窗口是空的，输入的文字也不会查找；"
            "请为每一级补上一行。\n");
  const Outcome json = Run(check + " --json");
  EXPECT_EQ(json.code, 1);
  EXPECT_EQ(json.out.substr(0, json.out.find('\n')),
            R"({"column":"FldWidth","fault":"表 s_infoitem，行 A03.A0302，列 FldWidth：“宽”不是 16 位整数，)"
            R"(一打开“工作经历”，窗口就会关闭；请改为 0（不显示）至 32767 的整数。",)"
            R"("row":"A03.A0302","table":"s_infoitem"})");
  EXPECT_EQ(std::count(json.out.begin(), json.out.end(), '\n'), 2);
}

// What the page of the database tells a host to do is sound.
TEST_F(Program, CheckSaysNothingAfterTheExamplesOfThePages) {
  for (const std::string page : {"docs/database.md", "docs/database.zh-CN.md"}) {
    const fs::path file = In(page.substr(5) + ".db");
    Run("create-empty '" + file.string() + "'");
    const auto examples = BlocksOf(page, "sql");
    ASSERT_EQ(examples.size(), 3U) << page;
    for (const std::string& example : examples) {
      sqlite::SqliteConnection(file.string()).RunScript(example);
      const Outcome outcome = Run("check '" + file.string() + "'");
      EXPECT_EQ(outcome.out + outcome.error, "") << page << "\n" << example;
      EXPECT_EQ(outcome.code, 0) << page;
    }
  }
}

TEST_F(Program, CheckFindsAMissingTableOfTheMetadata) {
  Run("create-sample '" + In("s.db").string() + "'");
  sqlite::SqliteConnection(In("s.db").string()).RunScript("drop table s_infoitem");
  const Outcome outcome = Run("check --database '" + In("s.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out,
            "表 s_infoitem：没有这张表，窗口打不开；请照 dossier create-empty 建立的空数据库补上。\n");
}

TEST_F(Program, CheckExitsWithTwoWhereItCannotRead) {
  std::ofstream(In("text.db")) << std::string(4096, 'x');
  Run("create-sample '" + In("s.db").string() + "'");
  for (const std::string& arguments :
       {"--database '" + In("none.db").string() + "'", "--database '" + In("text.db").string() + "'",
        "--database '" + In("s.db").string() + "' --photos '" + In("nowhere").string() + "'",
        std::string("--connection 'Driver=Other;Database=x'"), std::string("--new")}) {
    const Outcome outcome = Run("check " + arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_NE(outcome.error, "") << arguments;
  }
}

TEST_F(Program, CreateSampleWhereNothingCanBeWrittenSaysSo) {
  const Outcome outcome = Run("create-sample '" + In("no such folder/s.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法建立示例数据库"), std::string::npos) << outcome.error;
}

TEST_F(Program, PhotographsThatCannotBeCopiedAreToldAndExitWithOne) {
  fs::create_directory(In("tour-data"));
  std::ofstream(In("tour-data/photos")) << "a file where the folder should be";
  const Outcome outcome = Run("--tour '" + In("").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法复制示例照片到 " + In("tour-data/photos").string()), std::string::npos)
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
  EXPECT_EQ(outcome.error, "dossier: 无法打开数据库 " + In("none.db").string() + "（数据库文件不存在：" +
                               In("none.db").string() +
                               "），请检查路径，或用 dossier create-empty 建立没有人员的数据库。\n");
}

TEST_F(Program, AFileThatIsNoDatabaseIsNamed) {
  std::ofstream(In("text.db")) << std::string(4096, 'x');
  const Outcome outcome = Run("--new --database '" + In("text.db").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("无法打开数据库"), std::string::npos) << outcome.error;
  EXPECT_NE(outcome.error.find("请检查此文件，或从备份恢复"), std::string::npos) << outcome.error;
  EXPECT_EQ(outcome.error.find("create-sample"), std::string::npos) << outcome.error;
}

TEST_F(Program, ASchemaThatLacksATableIsNamed) {
  for (const std::string table :
       {"s_infotable", "s_infoitem", "s_CodeTableDefine", "s_CodeLevDefine", "S_GUID", "a01"}) {
    fs::remove(In("s.db"));
    Run("create-sample '" + In("s.db").string() + "'");
    sqlite::SqliteConnection(In("s.db").string()).RunScript("drop table " + table);
    const Outcome outcome = Run("--new --database '" + In("s.db").string() + "'");
    EXPECT_EQ(outcome.code, 1) << table;
    EXPECT_NE(outcome.error.find("读取表 " + table + " 失败"), std::string::npos) << outcome.error;
    EXPECT_NE(outcome.error.find(
                  "），请选择人员档案数据库，或从备份恢复；新的数据库可用 dossier create-empty 建立。\n"),
              std::string::npos)
        << outcome.error;
  }
}

TEST_F(Program, AConnectionStringOfAnotherEngineIsRefused) {
  const Outcome outcome = Run("--new --connection 'Driver=Other;Database=x'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("连接字符串"), std::string::npos) << outcome.error;
}

TEST_F(Program, APasswordIsNeverShown) {
  for (const char* command : {"--new", "check"}) {
    const Outcome outcome = Run(std::string(command) + " --connection 'Driver=Other;Uid=u;Pwd=geheim'");
    EXPECT_NE(outcome.error.find("Driver=Other"), std::string::npos) << outcome.error;
    EXPECT_EQ((outcome.out + outcome.error).find("geheim"), std::string::npos) << outcome.error;
  }
}

TEST_F(Program, AConnectionStringOfTheEmbeddedEngineOpensItsFile) {
  Run("create-sample '" + In("s.db").string() + "'");
  PutBadPhotograph(In("photos"));
  for (const char* start : {"Driver=SQLite3;Database=", "x;DRIVER=sqlite;DATABASE="}) {
    const Outcome outcome = Run("--person " + kPerson + " --connection '" + start + In("s.db").string() +
                                "' --photos '" + In("photos").string() + "'");
    EXPECT_NE(outcome.error.find("dossier: 无效图片\n"), std::string::npos) << outcome.error;
  }
}

TEST_F(Program, AVisitThatFailsReturnsNothing) {
  Run("create-sample '" + In("s.db").string() + "'");
  PutBadPhotograph(In("photos"));
  const Outcome outcome = Run("--person " + kPerson + " --database '" + In("s.db").string() + "' --photos '" +
                              In("photos").string() + "'");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.error.find("dossier: 无效图片\n"), std::string::npos) << outcome.error;
}

TEST_F(Program, WorkingCopiesLieInTheDataFolderOfTheUser) {
  PutBadPhotograph(In("data/dossierkit/photos"));
  const Outcome outcome = Run("--person " + kPerson, "XDG_DATA_HOME='" + In("data").string() + "' ");
  EXPECT_NE(outcome.error.find("无效图片"), std::string::npos) << outcome.error;
  sqlite::SqliteConnection database(In("data/dossierkit/dossier.db").string());
  EXPECT_EQ(One(database, "select count(*) from A01"), "12");
}

// As it is installed by an administrator.
TEST_F(Program, WorkingCopiesOfAProtectedSampleCanBeWritten) {
  const fs::path program = DossierProgram();
  fs::create_directories(In("bin"));
  fs::copy(program, In("bin"));
  fs::copy(program.parent_path().parent_path() / "share", In("share"), fs::copy_options::recursive);
  PutBadPhotograph(In("share/dossierkit/photos"));
  const fs::perms kRead = fs::perms(0444);
  fs::permissions(In("share/dossierkit/sample.db"), kRead);
  fs::permissions(In("share/dossierkit/photos/" + kPerson + ".jpg"), kRead);
  const std::string command = "XDG_DATA_HOME='" + In("data").string() + "' '" +
                              (In("bin") / program.filename()).string() + "' --person " + kPerson +
                              " >/dev/null 2>&1 </dev/null";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  for (const std::string& copy : {std::string("dossier.db"), "photos/" + kPerson + ".jpg"}) {
    EXPECT_EQ(fs::status(In("data/dossierkit/" + copy)).permissions(), kRead | fs::perms::owner_write)
        << copy;
  }
}

TEST_F(Program, TheDataFolderIsMadeForTheUserAlone) {
  PutBadPhotograph(In("photos"));
  Run("--person " + kPerson + " --photos '" + In("photos").string() + "'",
      "XDG_DATA_HOME='" + In("data").string() + "' ");
  EXPECT_TRUE(fs::exists(In("data/dossierkit/dossier.db")));
  EXPECT_EQ(fs::status(In("data/dossierkit")).permissions(), fs::perms::owner_all);
}

TEST_F(Program, WithoutADataFolderTheyLieInTheOneByDefaultAndStay) {
  PutBadPhotograph(In("home/.local/share/dossierkit/photos"));
  const std::string before = "env -u XDG_DATA_HOME HOME='" + In("home").string() + "' ";
  Run("--person " + kPerson, before);
  const fs::path file = In("home/.local/share/dossierkit/dossier.db");
  sqlite::SqliteConnection(file.string()).RunScript("delete from A01 where A0199>1");
  const Outcome outcome = Run("--person " + kPerson, before);
  EXPECT_NE(outcome.error.find("无效图片"), std::string::npos) << outcome.error;
  const fs::directory_iterator photos(In("home/.local/share/dossierkit/photos"));
  EXPECT_EQ(std::distance(begin(photos), end(photos)), 1) << "the folder that was there stays as it is";
  sqlite::SqliteConnection database(file.string());
  EXPECT_EQ(One(database, "select count(*) from A01"), "1");
}

TEST_F(Program, TheTourLeavesOtherFilesOfItsFolderAlone) {
  fs::create_directories(In("tour/photos"));
  std::ofstream(In("tour/tour.db")) << "mine";
  std::ofstream(In("tour/photos/mine.jpg")) << "mine";
  fs::create_directories(In("tour/tour-data"));
  std::ofstream(In("tour/tour-data/tour.db")) << "of the last tour";
  std::ofstream(In("tour/tour-data/photos")) << "so that it ends at once";
  Run("--tour '" + In("tour").string() + "'");
  EXPECT_EQ(Read(In("tour/tour.db")), "mine");
  EXPECT_EQ(Read(In("tour/photos/mine.jpg")), "mine");
  sqlite::SqliteConnection database(In("tour/tour-data/tour.db").string());
  EXPECT_EQ(One(database, "select count(*) from A01"), "12");
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
  // The tour's own looks at the database are no statements of the component.
  EXPECT_EQ(trace.find("A0101='林知远'"), std::string::npos);
}

}  // namespace
}  // namespace dossierkit::tests
