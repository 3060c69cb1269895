// What the check foretells where a visit does not end: what the clerk meets in the window.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Foretold : public testing::Test {
 protected:
  // One thing made wrong in the sample, and how often the check tells something.
  void Break(const std::string& script, std::size_t faults = 1) {
    visit.database->RunScript(script);
    EXPECT_EQ(check::CheckDatabase(*visit.database).size(), faults);
  }
  std::string Count(const std::string& set) {
    return One(*visit.database, "select count(*) from " + set + " where A00='" + kPerson + "'");
  }

  Visit visit;
};

TEST_F(Foretold, ManyRecordsInASetOfOneAreLostByASave) {
  Break("update s_infotable set Property=1 where tblname='A03'");
  ASSERT_EQ(Count("A03"), "5");
  visit.Open([&] {
    visit.GoTo("A03");
    EXPECT_FALSE(visit.Enabled("Add"));
    EXPECT_FALSE(visit.Enabled("Delete"));
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Count("A03"), "1");
}

TEST_F(Foretold, CodesOnALongTextAreStoredByTheirCaptions) {
  Break("update s_infoitem set FieldType='Ntext' where itemname='A0303'");
  const std::string caption = One(*visit.database, "select dmcpt from LCZW where dmcod='101'");
  visit.Open([&] {
    visit.GoTo("A03");
    visit.EnterCode("A03_A0303", "101");
    visit.Text("A03_A0303").SetText(caption);
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(One(*visit.database,
                "select count(*) from A03 where A00='" + kPerson + "' and A0303='" + caption + "'"),
            "1");
}

TEST_F(Foretold, AShortTextOfMoreThan255CharactersIsNotSaved) {
  Break("update A03 set A0302=printf('%.*c',256,'x') where A00='" + kPerson + "' and A0399=1");
  visit.Open([&] {
    visit.GoTo("A03");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(visit.Messages(), Texts{"工作单位 数据应该小于256个字符长度"});
}

TEST_F(Foretold, ATextLongerThanItsFieldCanOnlyBeShortened) {
  Break("update A03 set A0302=printf('%.*c',121,'x') where A00='" + kPerson + "' and A0399=1");
  visit.Open([&] {
    visit.GoTo("A03");
    visit.user.Click("A03_A0302_v");
    visit.user.Press(toolkit::kKeyEnd);
    visit.user.Type("y");
    EXPECT_EQ(visit.Text("A03_A0302").Text(), std::string(121, 'x'));
    visit.user.Press(toolkit::kKeyBack);
    EXPECT_EQ(visit.Text("A03_A0302").Text(), std::string(120, 'x'));
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(visit.Messages(), Texts{});
}

TEST_F(Foretold, APersonTypeThatDoesNotExistLeadsToAnItemThatEndsTheVisit) {
  Break("update A01 set A0136=4 where A00='" + kPerson + "'");
  visit.component.PersonType = 4;
  EXPECT_THROW(
      visit.Open([&] { visit.user.ClickMenu(static_cast<int>(visit.Window().VMenu1().Items().size())); }),
      environment::Failure);
}

}  // namespace
}  // namespace dossierkit::tests
