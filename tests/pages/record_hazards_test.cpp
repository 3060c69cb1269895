// The list and the form beside it: what looks like a mistake, is dangerous, and is required all the same.
#include <gtest/gtest.h>

#include "metadata/field_items.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using Texts = std::vector<std::string>;

class RecordHazard : public ::testing::Test {
 protected:
  // The posts of the sample person, in the order of their numbers.
  Texts Posts() {
    return Column(*visit.database, "select A0404 from A04 where A00='" + kPerson + "' order by A0499," +
                                       EngineOfThisRun().row_order);
  }
  void FillPost(const std::string& post) {
    visit.Masked("A04_A0401").SetText("2020年01月");
    visit.Text("A04_A0403").SetText("学会");
    visit.Text("A04_A0404").SetText(post);
  }

  Visit visit;
};

const Texts kPosts = {"副理事长", "副主编", "水稻专业组组长", "兼职博士生导师"};

TEST_F(RecordHazard, RequiredAfterNoOnTheEducationListAndFormShowDifferentRecords) {
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    // The first record becomes the last, and the others move up.
    visit.Masked("A02_A0201").SetText("1999年01月");
    visit.script.WillAnswer(toolkit::kAnswerNo);
    visit.user.ClickRow(3);
    const auto grid = visit.user.Find<toolkit::DataGrid>("DGItems");
    EXPECT_EQ(grid->Row(), 3);
    EXPECT_EQ(grid->Cell(3, 0), "1993-09");
    EXPECT_EQ(grid->Cell(3, 3), "作物遗传育种");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    EXPECT_EQ(visit.Masked("A02_A0201").Text(), "1999年01月");
    EXPECT_EQ(visit.Text("A02_A0203").Text(), "农学");
  });
}

TEST_F(RecordHazard, RequiredTheEmptyFormOfARecordNumberedZeroReplacesTheRecordShownBefore) {
  for (const char* number : {"0", "-1"}) {
    Visit each;
    each.database->RunScript("update A04 set A0499=" + std::string(number) + " where A00='" + kPerson +
                             "' and A0404='副主编'");
    each.OpenPerson(kPerson, [&] {
      each.GoTo("A04");
      each.user.ClickRow(3);
      EXPECT_EQ(each.Text("A04_A0404").Text(), "水稻专业组组长");
      each.user.ClickRow(2);
      EXPECT_EQ(each.Text("A04_A0404").Text(), "");
      each.Masked("A04_A0401").SetText("2020年01月");
      each.Text("A04_A0403").SetText("学会");
      each.Text("A04_A0404").SetText("新");
      each.user.Press('S', toolkit::kCtrl);
    });
    EXPECT_TRUE(each.Messages().empty());
    auto posts = Column(*each.database, "select A0404 from A04 where A00='" + kPerson + "' order by A0401");
    EXPECT_EQ(posts, (Texts{"副理事长", "副主编", "兼职博士生导师", "新"})) << number;
  }
}

TEST_F(RecordHazard, RequiredWithoutACaptionOfTheNumberEverySaveReplacesRecordOneUntilAdd) {
  visit.database->RunScript(
      "update s_infoitem set itemdesc='' where itemname='A0499';"
      "update s_infotable set orderfield='A0499',maxnumber=null where tblname='A04'");
  EXPECT_EQ(Posts(), kPosts);
  visit.OpenPerson(kPerson, [&] {
    for (const char* post : {"甲", "乙"}) {
      visit.GoTo("A04");
      visit.user.ClickRow(3);
      EXPECT_EQ(visit.Text("A04_A0404").Text(), "");
      FillPost(post);
      visit.user.Press('S', toolkit::kCtrl);
      EXPECT_EQ(Posts(), (Texts{post, kPosts[1], kPosts[2], kPosts[3]}));
    }
    // The save went on with Add: what is entered now is a record of its own.
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    FillPost("丙");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(visit.Messages(), Texts());
  EXPECT_EQ(Posts(), (Texts{"乙", kPosts[1], kPosts[2], kPosts[3], "丙"}));
}

}  // namespace
}  // namespace dossierkit::tests
