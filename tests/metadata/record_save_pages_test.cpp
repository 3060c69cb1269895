// What Save writes from the pages of the window, as the user leaves them.
#include <algorithm>

#include "tests/metadata/save_test.h"

namespace dossierkit::tests {
namespace {

class PageSave : public SaveTest {
 protected:
  // The one statement since then that begins so.
  std::string Ran(const std::string& beginning) const {
    Statements found;
    for (const auto& statement : visit.statements) {
      if (statement.starts_with(beginning)) found.push_back(statement);
    }
    EXPECT_EQ(found.size(), 1U) << beginning;
    return found.empty() ? "" : found.front();
  }
};

TEST_F(PageSave, TheBasicDataOfAStoredPersonAreUpdatedInTheOrderOfThePage) {
  InWindow([&] {
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(
        Ran("update"),
        "update A01 set A0101 = '陆怀谷',A0102 = '1',A0103 = '01',A0114 = '320481',A0104 = '1968年03月12日',"
        "A0105 = '01',A0106 = '11',A0107 = '209',A0140 = '江淮农业大学',A0108 = '1996年07月',"
        "A0109 = '作物遗传育种',A0110 = '水稻分子育种',A0116 = '1989年08月',"
        "A0115 = '江淮省农业科学院粮食作物研究所',A0113 = '305',A0121 = '江淮省云溪市学田路18号',"
        "A0117 = '210000',A0118 = '000-00000101',A0119 = '10000000001',A0120 = 'luhuaigu@example.com',"
        "A0112 = '611',A0122 = '210',A0123 = '30',A0124 = '20',A0125 = '20',A0128 = '2010',A0129 = '',"
        "A0127 = '2022',A0131 = '320481196803120316' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(PageSave, SavingWhatIsStoredChangesNothing) {
  const Lines before = Rows("select * from A01 order by A0199");
  InWindow([&] { visit.user.ClickToolbar("Save"); });
  EXPECT_EQ(Rows("select * from A01 order by A0199"), before);
}

TEST_F(PageSave, ANewPersonIsInsertedInTheOrderOfThePage) {
  visit.component.PersonType = 3;
  visit.database->RunScript("update A01 set A0199 = 99");
  std::string person;
  const bool saved = visit.OpenNew([&] {
    person = visit.Window().personID;
    visit.Text("A01_A0101").SetText("李四");
    visit.EnterCode("A01_A0102", "2");
    visit.EnterCode("A01_A0103", "05");
    visit.EnterCode("A01_A0106", "11");
    visit.Masked("A01_A0104").SetText("1974年09月25日");
    visit.Text("A01_A0110").SetText("育种");
    visit.Text("A01_A0115").SetText("所");
    visit.Text("A01_A0131").SetText("330681740925264");
    visit.statements.clear();
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(
        Ran("insert"),
        "insert into A01( A00 ,A0136,A0199,A0101,A0102,A0103,A0114,A0104,A0105,A0106,A0107,A0140,A0109,A0110,"
        "A0115,A0113,A0121,A0117,A0118,A0119,A0120,A0112,A0122,A0123,A0124,A0125,A0128,A0129,A0127,A0131) "
        "values('" +
            person +
            "',3 ,100,'李四','2','05','','1974年09月25日','','11','','','','育种','所','','','','',"
            "'','','','','','','','','','','330681740925264')");
    EXPECT_EQ(visit.Caption("labPersonName"), "李四");
  });
  EXPECT_TRUE(saved);
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(Rows("select A0136,A0199,A0101,A0104,A0108 from A01 where A00='" + person + "'"),
            Lines{"3|100|李四|1974/9/25|NULL"});
}

TEST_F(PageSave, AnEmptyNewPersonIsToldOfEveryRequiredField) {
  visit.OpenNew([&] { visit.user.ClickToolbar("Save"); });
  // The identity number stands last and drops the lines before it.
  ExpectMessage("身份证号码必须为15或18位\r\n身份证号  为必填项", "错误信息");
}

TEST_F(PageSave, AMultipleSetIsReplacedWithItsCodes) {
  InWindow([&] {
    visit.GoTo("A03");
    visit.statements.clear();
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(Ran("delete"),
              "delete from A03 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'  and A0399 = 1");
    EXPECT_EQ(Ran("insert"),
              "insert into A03( A00 ,A0399,A0301,A0301A,A0302,A0304,A0303) "
              "values('47EAA099-2CB6-416D-A6DC-283CF0480FF9','1','1989年08月','1990年08月','溧阳市良种繁育场'"
              ",'095','999')");
    EXPECT_EQ(Ran("select * from A03 where A00 ='"),
              "select * from A03 where A00 ='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by A0301");
  });
}

TEST_F(PageSave, ASingleSetIsReplacedByTheIdentifierAlone) {
  InWindow([&] {
    visit.GoTo("A13");
    visit.Text("A13_A1305").SetText("第一行\r\n第二行");
    visit.statements.clear();
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(Ran("delete"), "delete from A13 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' ");
    EXPECT_EQ(Ran("insert"),
              "insert into A13( A00 ,A1302,A1303,A1301,A1304,A1305) "
              "values('47EAA099-2CB6-416D-A6DC-283CF0480FF9','19','12','8','460','第一行\r\n第二行')");
  });
}

TEST_F(PageSave, RequiredAFieldOfATypeOfAnotherNameIsShownAndErasedByASave) {
  visit.database->RunScript("update s_infoitem set FieldType='nvarchar' where itemname='A0403'");
  InWindow([&] {
    visit.GoTo("A04");
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "江淮省作物学会");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(Rows("select A0403,A0404 from A04 where A0499=1 and A00='" + kPerson + "'"),
            Lines{"NULL|副理事长"});
}

TEST_F(PageSave, RequiredOfTheBasicDataSuchAFieldKeepsItsOldValue) {
  visit.database->RunScript("update s_infoitem set FieldType='nvarchar' where itemname='A0110'");
  InWindow([&] {
    visit.Text("A01_A0110").SetText("别的");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.Text("A01_A0110").Text(), "水稻分子育种");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(PageSave, EverySetSavedAsItStandsKeepsItsRecords) {
  for (const std::string set : {"A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A12", "A13",
                                "A14", "A15", "A21", "B01"}) {
    const std::string query = "select * from " + set + " where A00='" + kPerson + "'";
    Visit other;
    Lines before = tests::Rows(*other.database, query);
    other.OpenPerson(kPerson, [&] {
      other.GoTo(set);
      EXPECT_TRUE(other.Window().Save(other.OnShow())) << set;
    });
    Lines after = tests::Rows(*other.database, query);
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    EXPECT_EQ(after, before) << set;
  }
}

}  // namespace
}  // namespace dossierkit::tests
