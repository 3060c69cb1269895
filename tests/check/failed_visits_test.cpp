// What the check foretells: a visit to the faulty database ends, and the failure says where.
#include "platform/environment/failure.h"
#include "platform/environment/placed_failure.h"
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

struct Ending {
  const char* name;  // of the test
  std::string script;
  std::string set;  // the one that is opened
  int number;
  std::string words;
  environment::Place place;
};

void PrintTo(const Ending& ending, std::ostream* out) { *out << ending.name; }

std::string NameOfEnding(const testing::TestParamInfo<Ending>& info) { return info.param.name; }

class FailedVisits : public testing::TestWithParam<Ending> {};

TEST_P(FailedVisits, SayWhere) {
  Visit visit;
  visit.database->RunScript(GetParam().script);
  EXPECT_FALSE(check::CheckDatabase(*visit.database).empty());
  try {
    visit.Open([&] { visit.GoTo(GetParam().set); });
    FAIL() << "the visit went well";
  } catch (const environment::PlacedFailure& failure) {
    EXPECT_EQ(failure.number(), GetParam().number);
    EXPECT_EQ(failure.what(), GetParam().words);
    EXPECT_EQ(failure.place().set, GetParam().place.set);
    EXPECT_EQ(failure.place().field, GetParam().place.field);
    EXPECT_EQ(failure.place().doing, GetParam().place.doing);
    EXPECT_EQ(failure.place().statement, GetParam().place.statement);
  }
}

const std::string kFieldsOfA03 = " select * from s_infoitem  where tblname ='A03'";
const std::string kFirstRecord = "select * from A03 where a00 ='" + kPerson + "' and A0399=1";

const std::vector<Ending> kEndings = {
    {"ARowOfAControlThatIsMissing",
     "delete from s_infoitem where itemname='A0302'",
     "A03",
     5,
     "无效的过程调用或参数",
     {"A03", "A0302", "填写页面", ""}},
    {"ARowTwice",
     "insert into s_infoitem select * from s_infoitem where itemname='A0302'",
     "A03",
     457,
     "此键已经与该集合的一个元素关联",
     {"A03", "A0302", "读取字段的定义", kFieldsOfA03}},
    {"AWidthThatIsNoNumber",
     "update s_infoitem set FldWidth='宽' where itemname='A0302'",
     "A03",
     13,
     "类型不匹配",
     {"A03", "A0302", "读取字段的定义", kFieldsOfA03}},
    {"ALengthThatIsNoNumber",
     "update s_infoitem set FieldLength='12O' where itemname='A0302'",
     "A03",
     13,
     "类型不匹配",
     {"A03", "A0302", "填写页面", ""}},
    {"AColumnThatIsMissing",
     "alter table A03 drop column A0303",
     "A03",
     3265,
     "在对应所需名称或序数的集合中，未找到项目。",
     {"A03", "A0303", "读取字段的内容", kFirstRecord}},
    {"APropertyThatIsNoNumber",
     "update s_infotable set Property='是' where tblname='A12'",
     "A12",
     13,
     "类型不匹配",
     {"A12", "", "打开信息集", ""}},
    {"OneRecordInASetWhosePageHasNoList",
     "update s_infotable set Property=0 where tblname='A12'",
     "A12",
     environment::kUnknownName,
     "至少一个参数没有被指定值：未知的名称“A1299”。",
     {"A12", "", "打开信息集", "select * from A12 where a00 ='" + kPerson + "' and A1299=1"}},
    {"ASetWithoutAPage",
     "insert into s_infotable(tblname,tbldesc,OtherProp,Property) values('A07','专业特长',17,0)",
     "A07",
     731,
     "无法创建控件，没有这个类：DossierKit.ctrlUserA07",
     {"A07", "", "打开信息集", ""}},
    {"AMenuCaptionThatIsNull",
     "update s_infotable set tbldesc=null where tblname='A09'",
     "A09",
     94,
     "无效使用 Null",
     {"A09", "", "读取菜单", "SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp"}},
};

INSTANTIATE_TEST_SUITE_P(Check, FailedVisits, testing::ValuesIn(kEndings), NameOfEnding);

TEST(FailedList, SaysItsStatement) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set itemdesc='E-Mail' where itemname='A0302'");
  try {
    visit.Open([&] { visit.GoTo("A03"); });
    FAIL() << "the visit went well";
  } catch (const environment::PlacedFailure& failure) {
    EXPECT_EQ(failure.place().set, "A03");
    EXPECT_EQ(failure.place().doing, "读取记录列表");
    EXPECT_NE(failure.place().statement.find("A03.A0302 as E-Mail"), std::string::npos);
  }
}

TEST(FailedField, SaysItsFieldWhereItIsLeft) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set [Check]='L 15;18' where itemname='A0302'");
  try {
    visit.Open([&] {
      visit.GoTo("A03");
      visit.Text("A03_A0302").SetFocus();
      visit.user.Type("某单位");
      visit.Text("A03_A0304").SetFocus();
    });
    FAIL() << "the visit went well";
  } catch (const environment::PlacedFailure& failure) {
    EXPECT_STREQ(failure.what(), "类型不匹配");
    EXPECT_EQ(failure.place().set, "A03");
    EXPECT_EQ(failure.place().field, "A0302");
    EXPECT_EQ(failure.place().doing, "检查录入的内容");
  }
}

}  // namespace
}  // namespace dossierkit::tests
