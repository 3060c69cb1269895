// What nobody should type, paste or store: never a crash, always a clear message or an exact value.
#include <gtest/gtest.h>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::kCtrl;
using Texts = std::vector<std::string>;

const std::string kOfPerson = " where A00='" + kPerson + "'";

std::string Repeated(const std::string& text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

// Empties the field and pastes the text into it.
void Replace(Visit& visit, const std::string& field, const std::string& text) {
  visit.Text(field).SetFocus();
  visit.user.Press('A', kCtrl);
  visit.user.Press(toolkit::kKeyDelete);
  visit.user.Paste(text);
}

TEST(BadInput, RequiredAPastedApostropheBreaksTheSaveAndTheRecordIsGoneUntilTheNext) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    Replace(visit, "A04_A0403", "O'Neil学会");
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "O'Neil学会");
    visit.user.Press('S', kCtrl);
    ASSERT_EQ(visit.script.messages.size(), 1U);
    EXPECT_EQ(visit.script.messages.front().title, "信息保存");
    EXPECT_EQ(visit.script.messages.front().flags, 0);
    EXPECT_NE(visit.script.messages.front().text, "");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(One(*visit.database, "select count(*) from A04" + kOfPerson), "3");
    Replace(visit, "A04_A0403", "O＇Neil学会");
    visit.user.Press('S', kCtrl);
    EXPECT_EQ(visit.script.messages.size(), 1U);
  });
  EXPECT_EQ(One(*visit.database, "select A0403 from A04" + kOfPerson + " and A0499=1"), "O＇Neil学会");
}

TEST(BadInput, RequiredAnApostropheIsTypedWhereKeysAreNotPreviewedAndBreaksTheSave) {
  Visit visit;
  EXPECT_FALSE(visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A15");
    visit.user.Type("it's");
    visit.user.ClickToolbar("Save");
    EXPECT_TRUE(visit.Window().Loaded());
  }));
  ASSERT_EQ(visit.script.messages.size(), 1U);
  EXPECT_EQ(visit.script.messages.front().title, "信息保存");
}

TEST(BadInput, AnApostropheCannotSmuggleInAStatement) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    Replace(visit, "A04_A0403", "x'); delete from A05; --");
    visit.user.Press('S', kCtrl);
  });
  ASSERT_EQ(visit.script.messages.size(), 1U);
  EXPECT_EQ(visit.script.messages.front().title, "信息保存");
  EXPECT_NE(One(*visit.database, "select count(*) from A05"), "0");
}

TEST(BadInput, SymbolsOfAllKindsAreStoredAsTheyStand) {
  const Texts texts = {"👍🏽👨‍👩‍👧‍👦",
                       "שלום עולם مرحبا",
                       "\"引号\" `;--/* */",
                       "a%_[b]*?#",
                       "𠮷野家𪚥",
                       "é",
                       "\\n\\",
                       "1e5",
                       "null",
                       "　全角　"};
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const auto& text : texts) {
      visit.GoTo("A04");
      visit.user.ClickRow(1);
      Replace(visit, "A04_A0403", text);
      visit.user.Press('S', kCtrl);
      EXPECT_EQ(One(*visit.database, "select A0403 from A04" + kOfPerson + " and A0499=1"), text);
      visit.user.ClickRow(1);
      EXPECT_EQ(visit.Text("A04_A0403").Text(), text);
    }
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(BadInput, AVeryLongPasteStopsAtTheLimitOfTheField) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    Replace(visit, "A04_A0403", Repeated("长", 100000));
    EXPECT_EQ(visit.Text("A04_A0403").Text(), Repeated("长", 120));
    visit.OnShow().WhInfo().IsChange = false;
    visit.GoTo("A12");
    Replace(visit, "A12_A1201", Repeated("长", 100000));
    EXPECT_EQ(visit.Text("A12_A1201").Text(), Repeated("长", 1000));
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(BadInput, AVeryLongTextWithoutALimitIsStoredWholeOrRefusedByItsLength) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set FieldLength=null where itemname in ('A0403','A1201')");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A12");
    Replace(visit, "A12_A1201", Repeated("长", 100000));
    visit.user.ClickToolbar("Save");
    EXPECT_TRUE(visit.Messages().empty());
    EXPECT_EQ(visit.Text("A12_A1201").Text(), Repeated("长", 100000));
    visit.GoTo("A04");
    Replace(visit, "A04_A0403", Repeated("长", 100000));
    visit.user.Press('S', kCtrl);
    EXPECT_EQ(visit.script.messages,
              (std::vector<headless::Message>{{"任职单位名称 数据应该小于256个字符长度", 0, "错误信息"}}));
    visit.OnShow().WhInfo().IsChange = false;
  });
  EXPECT_EQ(One(*visit.database, "select A1201 from A12" + kOfPerson), Repeated("长", 100000));
}

TEST(BadInput, AMonthThatDoesNotExistIsRefused) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.Press('A', kCtrl);
    visit.user.Type("199013");
    EXPECT_EQ(visit.Masked("A04_A0401").Text(), "1990年13月");
    visit.user.Press('S', kCtrl);
    EXPECT_EQ(visit.Masked("A04_A0401").Text(), "1990年13月");
    visit.user.Press('A', kCtrl);
    visit.user.Type("199012");
    visit.user.Press('S', kCtrl);
  });
  EXPECT_EQ(visit.script.messages,
            (std::vector<headless::Message>{{"起始年月 数据应该是日期型，例如1990年03月", 0, "错误信息"}}));
  EXPECT_EQ(One(*visit.database, "select A0401 from A04" + kOfPerson + " and A0499=1"), "1990/12/1");
}

TEST(BadInput, AHalfFilledMaskIsRefused) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A10");
    visit.Masked("A10_A1002").SetFocus();
    visit.user.Press('A', kCtrl);
    visit.user.Type("20");
    visit.user.Press('S', kCtrl);
  });
  EXPECT_EQ(visit.script.messages,
            (std::vector<headless::Message>{{"发表年份 数据数据填写不完整", 0, "错误信息"}}));
}

TEST(BadInput, ANumberThatIsNoneIsRefusedAndOneTooGreatOverflows) {
  for (const auto& [typed, text, title] : std::vector<std::tuple<std::string, std::string, std::string>>{
           {"三", "硕士数量 数据应该输入数字", "错误信息"},
           {"1-2", "硕士数量 数据应该输入数字", "错误信息"},
           {"40000", "溢出", "信息保存"},
           {"99999999999999999999999", "溢出", "信息保存"}}) {
    Visit visit;
    visit.OpenPerson(kPerson, [&, value = typed] {
      visit.GoTo("A13");
      Replace(visit, "A13_A1302", value);
      visit.user.ClickToolbar("Save");
    });
    EXPECT_EQ(visit.script.messages, (std::vector<headless::Message>{{text, 0, title}})) << typed;
  }
}

TEST(BadInput, NothingInEveryColumnIsAnEmptyFormInEverySet) {
  Visit visit;
  const Texts sets = {"A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10",
                      "A11", "A12", "A13", "A14", "A15", "A21", "B01"};
  for (const char* set : {"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A12", "A13",
                          "A14", "A15", "A21", "B01"}) {
    for (const auto& column :
         Column(*visit.database, "select itemname from s_infoitem where tblname='" + std::string(set) +
                                     "' and itemname not like '%99'")) {
      visit.database->RunScript("update " + std::string(set) + " set " + column + "=null");
    }
  }
  visit.OpenPerson(kPerson, [&] {
    EXPECT_EQ(visit.Caption("labPersonName"), "");
    EXPECT_EQ(visit.Masked("A01_A0104").Text(), "____年__月__日");
    for (const auto& set : sets) {
      visit.GoTo(set);
      for (const auto& control : visit.OnShow().Controls()) {
        if (const auto* box = dynamic_cast<toolkit::TextBox*>(control.get())) {
          EXPECT_EQ(box->Text(), "") << box->Name();
        }
        if (const auto* box = dynamic_cast<toolkit::MaskEdBox*>(control.get())) {
          EXPECT_EQ(box->Text(), box->BlankMask());
        }
      }
    }
    visit.GoTo("A04");
    EXPECT_EQ(visit.user.Find<toolkit::DataGrid>("DGItems")->RowCount(), 4);
    EXPECT_EQ(visit.user.Find<toolkit::DataGrid>("DGItems")->Cell(1, 0), "");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(BadInput, NothingInTheMetadataIsAPlainPage) {
  Visit visit;
  visit.database->RunScript(
      "update s_infoitem set "
      "FieldLength=null,CodeTable=null,style=null,\"Check\"=null,FldOrder=null,FldWidth=null,"
      "FldExplain=null,\"IsNUll\"=null,FieldType=null where tblname in ('A04','A12');"
      "update s_infotable set OtherProp=null,orderfield=null,maxnumber=null where tblname in ('A04','A12')");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A12");
    EXPECT_EQ(visit.Caption("labExplain"), "");
    visit.GoTo("A04");
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "副理事长");
  });
}

TEST(BadInput, TextThatIsNoUtf8IsShownWithReplacementCharacters) {
  if (!EngineOfThisRun().takes_any_value) GTEST_SKIP() << "this engine stores no text that is no UTF-8";
  Visit visit;
  visit.database->RunScript("update A04 set A0403=cast(x'61ff62' as text), A0404=cast(x'eda080' as text)" +
                            kOfPerson +
                            " and A0499=1;"
                            "update A01 set A0101=cast(x'e4b8' as text)" +
                            kOfPerson +
                            ";"
                            "update s_infoitem set FldExplain=cast(x'c0af' as text) where itemname='A0401'");
  visit.OpenPerson(kPerson, [&] {
    EXPECT_TRUE(visit.Caption("labPersonName").starts_with("\xEF\xBF\xBD"));
    EXPECT_EQ(visit.Text("A01_A0101").Text(), visit.Caption("labPersonName"));
    visit.GoTo("A04");
    EXPECT_EQ(visit.Text("A04_A0403").Text(),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_TRUE(visit.Text("A04_A0404").Text().starts_with("\xEF\xBF\xBD"));
    EXPECT_EQ(visit.user.Find<toolkit::DataGrid>("DGItems")->Cell(1, 2),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_TRUE(visit.Caption("labExplain").starts_with("\xEF\xBF\xBD"));
    visit.user.Press('S', kCtrl);
  });
  EXPECT_EQ(One(*visit.database, "select A0403 from A04" + kOfPerson + " and A0499=1"),
            "a\xEF\xBF\xBD"
            "b");
}

TEST(BadInput, RubbishInAColumnOfADateOrANumberIsShownAndRefusedByASave) {
  if (!EngineOfThisRun().takes_any_value)
    GTEST_SKIP() << "this engine stores nothing but dates and numbers in their columns";
  Visit visit;
  visit.database->RunScript("update A04 set A0401='gestern'" + kOfPerson +
                            " and A0499=1;"
                            "update A13 set A1302='viel'" +
                            kOfPerson);
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.ClickRow(4);
    EXPECT_EQ(visit.Masked("A04_A0401").Text(), "gestern");
    visit.user.ClickToolbar("Save");
    visit.GoTo("A13");
    EXPECT_EQ(visit.Text("A13_A1302").Text(), "viel");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(visit.Messages(),
            (Texts{"起始年月 数据应该是日期型，例如1990年03月", "硕士数量 数据应该输入数字"}));
}

}  // namespace
}  // namespace dossierkit::tests
