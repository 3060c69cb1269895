// The examples on the pages of what a database must hold: what they say happens in the window.
#include <regex>

#include "tests/check/check_test.h"
#include "tests/support/page_blocks.h"

namespace dossierkit::tests {
namespace {

const std::vector<std::string> kPages = {"docs/database.md", "docs/database.zh-CN.md"};

// On a database without people, as create-empty makes it.
class DatabaseExamples : public testing::TestWithParam<std::string> {
 protected:
  DatabaseExamples() {
    visit.database->RunScript("delete from A01");
    for (const std::string& example : BlocksOf(GetParam(), "sql")) visit.database->RunScript(example);
    person = One(*visit.database, "select A00 from A01");
  }

  Visit visit;
  std::string person;
};

TEST_P(DatabaseExamples, LeaveADatabaseWithoutFaults) {
  EXPECT_EQ(TextsOf(check::CheckDatabase(*visit.database)), Texts{});
}

TEST_P(DatabaseExamples, StoreAPersonWhoCanBeOpenedAndSaved) {
  EXPECT_TRUE(std::regex_match(person, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"))) << person;
  EXPECT_EQ(Rows(*visit.database, "select A0136,A0199,A0101,A0105 from A01"), Texts{"1|1|王秀兰|NULL"});
  const bool saved = visit.OpenPerson(person, [&] {
    EXPECT_EQ(visit.Caption("labPersonName"), "王秀兰");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "女性");
    EXPECT_EQ(visit.Text("A01_A0105").Text(), "");
    EXPECT_EQ(visit.Masked("A01_A0104").Text(), "1975年03月01日");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(visit.Messages(), Texts{});
  EXPECT_TRUE(saved);
  EXPECT_EQ(Rows(*visit.database, "select A0136,A0199,A0101,A0105 from A01"), Texts{"1|1|王秀兰|"});
}

TEST_P(DatabaseExamples, StoreARecordAndChangeItsCaptions) {
  visit.OpenPerson(person, [&] {
    visit.GoTo("A03");
    EXPECT_EQ(visit.Masked("A03_A0301").Text(), "1998年07月");
    EXPECT_EQ(visit.Masked("A03_A0301A").Text(), "____年__月");
    EXPECT_EQ(visit.Text("A03_A0302").Text(), "云溪市农业科学院");
    EXPECT_EQ(visit.Caption("A03_A0302_c"), "单位全称");
    EXPECT_EQ(visit.Window().VMenu1().Items().at(2).caption, "工作简历");
  });
}

TEST_P(DatabaseExamples, LetAPostBeEnteredByItsShorthand) {
  visit.OpenPerson(person, [&] {
    visit.GoTo("A04");
    visit.user.Click("A04_A0404_v");
    visit.user.Type("lsz");
    visit.Text("A04_A0403").SetFocus();
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "理事长");
  });
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, DatabaseExamples, testing::ValuesIn(kPages),
                         [](const auto& page) { return page.index == 0 ? "English" : "Chinese"; });

TEST(DatabasePages, ShowTheSameExamples) {
  const auto without_comments = [](std::vector<std::string> blocks) {
    for (std::string& block : blocks) block = std::regex_replace(block, std::regex("--[^\n]*\n"), "");
    return blocks;
  };
  EXPECT_EQ(without_comments(BlocksOf(kPages[0], "sql")), without_comments(BlocksOf(kPages[1], "sql")));
}

}  // namespace
}  // namespace dossierkit::tests
