// The record list of a page: the statement that it writes from the metadata, and the grid.
#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/field_items.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using environment::Failure;
using Widths = std::vector<float>;

// The statement that the list of the page last opened was read with: the one behind its metadata.
std::string ListStatement(const Visit& visit) {
  const auto metadata =
      std::ranges::find_if(visit.statements.rbegin(), visit.statements.rend(),
                           [](const auto& text) { return text.ends_with("order by fldorder "); });
  return metadata == visit.statements.rbegin() ? "" : *(metadata - 1);
}

toolkit::DataGrid& Grid(Visit& visit) { return *visit.user.Find<toolkit::DataGrid>("DGItems"); }

Widths WidthsOf(const toolkit::DataGrid& grid) {
  Widths widths;
  for (std::size_t i = 0; i < grid.ColumnCount(); ++i) widths.push_back(grid.ColumnWidth(i));
  return widths;
}

std::vector<std::string> HeadingsOf(const toolkit::DataGrid& grid) {
  std::vector<std::string> headings;
  for (std::size_t i = 0; i < grid.ColumnCount(); ++i) headings.push_back(grid.Heading(i));
  return headings;
}

// Opens the list of a set of the sample person after `script` was run on the database.
std::string StatementOf(const std::string& set, const std::string& script) {
  Visit visit;
  visit.database->RunScript(script);
  visit.OpenPerson(kPerson, [&] { visit.GoTo(set); });
  return ListStatement(visit);
}

struct List {
  const char* set;
  const char* columns;  // the statement up to the condition on the person
  const char* order;
  std::size_t width_count;  // the last is the number, hidden
};

// clang-format off
const std::vector<List>& Lists() {
  static const std::vector<List> lists = {
      {"A02", "select format(A02.A0201,'yyyy-mm') as 起始年月, format(A02.A0201A,'yyyy-mm') as 截止年月, A02.A0202 as 就读院校, A02.A0203 as 专业, GB6864_A0204.dmcpt as 学位, A02.A0299 as 序号 from ( A02  left join GB6864 GB6864_A0204 on A02.A0204=GB6864_A0204.dmcod) ",
       "A0201", 6},
      {"A03", "select format(A03.A0301,'yyyy-mm') as 起始年月, format(A03.A0301A,'yyyy-mm') as 截止年月, A03.A0302 as 工作单位, GB8561_A0304.dmcpt as 职称, LCZW_A0303.dmcpt as 行政职务, A03.A0399 as 序号 from (( A03  left join GB8561 GB8561_A0304 on A03.A0304=GB8561_A0304.dmcod)   left join LCZW LCZW_A0303 on A03.A0303=LCZW_A0303.dmcod) ",
       "A0301", 6},
      {"A04", "select format(A04.A0401,'yyyy-mm') as 起始年月, format(A04.A0402,'yyyy-mm') as 截止时间, A04.A0403 as 任职单位名称, A04.A0404 as 职务名称, A04.A0499 as 序号 from A04",
       "A0401", 5},
      {"A05", "select format(A05.A0501,'yyyy-mm') as 起始年月, format(A05.A0502,'yyyy-mm') as 截止年月, A05.A0503 as 访问机构名称, A05.A0506 as 身份, A05.A0504 as 地点, A05.A0505 as 有关内容, A05.A0599 as 序号 from A05",
       "A0501", 7},
      {"A06", "select format(A06.A0601,'yyyy-mm') as 时间, A06.A0603 as 会议名称, A06.A0602 as 主办单位, A06.A0604 as 会议地点, A06.A0605 as 论文题目, A06.A0699 as 序号 from A06",
       "A0601", 6},
      {"A08", "select A08.A0801 as 成果项目名称, format(A08.A0802,'yyyy-mm') as 完成时间, A08.A0803 as 创新性成果, A08.A0804 as 经济或社会效益, A08.A0806 as 合作者, LCCYJS_A0805.dmcpt as 角色, A08.A0899 as 序号 from ( A08  left join LCCYJS LCCYJS_A0805 on A08.A0805=LCCYJS_A0805.dmcod) ",
       "A0802", 7},
      {"A09", "select A09.A0901 as 成果名称, A09.A0902 as 奖励名称, A09.A0904 as 批准机关, A09.A0905 as 排名, LCJLDJ_A0906.dmcpt as 等级, A09.A0907 as 年份, A09.A0908 as 证书编号, A09.A0909 as 主要合作者, LCJLJB_A0910.dmcpt as 奖励级别, A09.A0999 as 序号 from (( A09  left join LCJLDJ LCJLDJ_A0906 on A09.A0906=LCJLDJ_A0906.dmcod)   left join LCJLJB LCJLJB_A0910 on A09.A0910=LCJLJB_A0910.dmcod) ",
       "A0907", 10},
      {"A10", "select A10.A1001 as 名称, A10.A1002 as 发表年份, LCZZJS_A1003.dmcpt as 角色, A10.A1005 as 主要合作者, A10.A1004 as 排名, A10.A1006 as 出版机构, A10.A1007 as 情况说明, A10.A1099 as 序号 from ( A10  left join LCZZJS LCZZJS_A1003 on A10.A1003=LCZZJS_A1003.dmcod) ",
       "A1002", 8},
      {"A11", "select A11.A1101 as 成果名称, A11.A1102 as 完成年份, A11.A1103 as 主要完成人, A11.A1104 as 对成果的简要评价, A11.A1199 as 序号 from A11",
       "A1102", 5},
      {"A15", "select A15.A1501 as 项目名称, A15.A1502 as 任务来源, A15.A1503 as 技术路线, A15.A1505 as 合作者, A15.A1504 as 意义, A15.A1599 as 序号 from A15",
       "A1599", 6},
      {"A21", "select GB2659_A2111.dmcpt as 授权国家, A21.A2107 as 专利保护期, A21.A2101 as 专利名称, LCZLLB_A2104.dmcpt as 专利类别, A21.A2112 as 专利所有者, A21.A2113 as 排名, A21.A2199 as 序号 from (( A21  left join GB2659 GB2659_A2111 on A21.A2111=GB2659_A2111.dmcod)   left join LCZLLB LCZLLB_A2104 on A21.A2104=LCZLLB_A2104.dmcod) ",
       "A2199", 7},
  };
  return lists;
}
// clang-format on

TEST(RecordList, TheStatementOfEverySetOfManyRecords) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const List& list : Lists()) {
      visit.GoTo(list.set);
      const std::string set = list.set;
      EXPECT_EQ(ListStatement(visit), std::string(list.columns) + " Where " + set +
                                          ".A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by " +
                                          list.order);
    }
  });
}

TEST(RecordList, TheStatementOfItsMetadata) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] { visit.GoTo("A05"); });
  EXPECT_EQ(std::ranges::count(
                visit.statements,
                "select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,"
                "iif(style is null,'',style) as style ,iif(fldwidth is null,2000,fldwidth) as fldwidth "
                "from  s_infoitem where tblname ='A05' and itemname <> 'A00' and itemname <>'' and "
                "itemdesc <>''   order by fldorder "),
            1);
}

TEST(RecordList, WidthsComeFromTheMetadataAndTheNumberIsHidden) {
  Visit visit;
  visit.database->RunScript(
      "update s_infoitem set FldWidth=100+10*cast(FldOrder as integer) where FldWidth>0");
  visit.OpenPerson(kPerson, [&] {
    for (const List& list : Lists()) {
      visit.GoTo(list.set);
      const Widths widths = WidthsOf(Grid(visit));
      ASSERT_EQ(widths.size(), list.width_count) << list.set;
      for (std::size_t i = 0; i + 1 < widths.size(); ++i)
        EXPECT_EQ(widths[i], 110 + 10 * static_cast<float>(i));
      EXPECT_EQ(widths.back(), 0);
      EXPECT_EQ(Grid(visit).Heading(widths.size() - 1), "序号");
      EXPECT_TRUE(Grid(visit).Visible());
    }
  });
}

TEST(RecordList, TheExampleOfAList) {
  EXPECT_EQ(
      StatementOf(
          "A02",
          "update s_infoitem set itemdesc='' where tblname='A02' and itemname in ('A0201A','A0202','A0203');"
          "update s_infoitem set CodeTable='GB6864' where tblname='A02' and itemname='A0204';"
          "update s_infotable set orderfield=null where tblname='A02';"),
      "select format(A02.A0201,'yyyy-mm') as 起始年月, GB6864_A0204.dmcpt as 学位, A02.A0299 as 序号 from ( "
      "A02 "
      " left join GB6864 GB6864_A0204 on A02.A0204=GB6864_A0204.dmcod)  Where "
      "A02.A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by A0299");
}

TEST(RecordList, TwoFieldsOfOneCodeTableAreJoinedUnderTwoNames) {
  EXPECT_EQ(
      StatementOf(
          "A02",
          "update s_infoitem set itemdesc='' where tblname='A02' and itemname in ('A0201','A0201A','A0202');"
          "update s_infoitem set CodeTable='GB6864' where tblname='A02' and itemname='A0203';"),
      "select GB6864_A0203.dmcpt as 专业, GB6864_A0204.dmcpt as 学位, A02.A0299 as 序号 from (( A02  left "
      "join "
      "GB6864 GB6864_A0203 on A02.A0203=GB6864_A0203.dmcod)   left join GB6864 GB6864_A0204 on "
      "A02.A0204=GB6864_A0204.dmcod)  Where A02.A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by A0201");
}

TEST(RecordList, AStyleOnACodedFieldIsIgnored) {
  EXPECT_EQ(
      StatementOf("A02",
                  "update s_infoitem set itemdesc='' where tblname='A02' and itemname in "
                  "('A0201','A0201A','A0202','A0203');"
                  "update s_infoitem set style='yyyy' where tblname='A02' and itemname='A0204';"),
      "select GB6864_A0204.dmcpt as 学位, A02.A0299 as 序号 from ( A02  left join GB6864 GB6864_A0204 on "
      "A02.A0204=GB6864_A0204.dmcod)  Where A02.A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by A0201");
}

TEST(RecordList, AnEmptyOrderFieldMeansTheNumber) {
  for (const char* value : {"''", "null"}) {
    const std::string statement = StatementOf(
        "A04", std::string("update s_infotable set orderfield=") + value + " where tblname='A04'");
    EXPECT_TRUE(statement.ends_with(" Where A04.A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by A0499"))
        << statement;
  }
}

TEST(RecordList, AnOrderOfSeveralColumnsIsTakenAsItStands) {
  const std::string statement =
      StatementOf("A04", "update s_infotable set orderfield='A0403 desc,A0499' where tblname='A04'");
  EXPECT_TRUE(statement.ends_with("' order by A0403 desc,A0499")) << statement;
}

TEST(RecordList, WithoutAnOrderThereIsNoTail) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.OnShow().WhInfo().FldOrder = "";
    visit.OnShow().setDGItems();
    EXPECT_TRUE(
        ListStatement(visit).ends_with(" from A04 Where A04.A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' "));
  });
}

TEST(RecordList, APageWithoutASetRunsNothing) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    const auto page = visit.Window().LoadUCtrl("ctrlUserA04");
    const auto before = visit.statements.size();
    page->setDGItems();
    EXPECT_EQ(visit.statements.size(), before);
    EXPECT_EQ(visit.OnShow().AdodcRs(), nullptr);
  });
}

TEST(RecordList, AWidthThatIsNotGivenIs2000) {
  Visit visit;
  visit.database->RunScript(
      "update s_infoitem set FldWidth=100 where tblname='A04';"
      "update s_infoitem set FldWidth=null where itemname='A0403';"
      "update s_infoitem set FldWidth=0 where itemname='A0499'");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(WidthsOf(Grid(visit)), (Widths{100, 100, 2000, 100, 0}));
  });
}

TEST(RecordList, AWidthBeyond16BitsFailsTheList) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set FldWidth=40000 where itemname='A0403'");
  EXPECT_THROW(visit.OpenPerson(kPerson, [&] { visit.GoTo("A04"); }), Failure);
}

TEST(RecordList, FieldsWithoutACaptionAndThePersonColumnAreNotListed) {
  Visit visit;
  visit.database->RunScript(
      "insert into s_infoitem(tblname,itemname,itemdesc,FieldType,FldOrder) "
      "values('A04','A00','人员','varchar','00');"
      "insert into s_infoitem(tblname,itemname,itemdesc,FieldType,FldOrder) "
      "values('A04','','空','varchar','00');"
      "update s_infoitem set itemdesc=null where itemname='A0402';"
      "update s_infoitem set itemdesc='' where itemname='A0404';"
      "delete from s_infoitem where tblname='A04' and itemname=''");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(HeadingsOf(Grid(visit)), (std::vector<std::string>{"起始年月", "任职单位名称", "序号"}));
  });
}

TEST(RecordList, AFieldAddedToTheMetadataShowsInTheList) {
  Visit visit;
  visit.database->RunScript(
      "alter table A04 add column A0405 varchar(20); update A04 set A0405='备注' || A0499;"
      "insert into s_infoitem(tblname,itemname,itemdesc,FieldType,FldOrder,FldWidth) "
      "values('A04','A0405','备注','Varchar','03',700)");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    const auto headings = HeadingsOf(Grid(visit));
    const auto place = std::ranges::find(headings, "备注");
    ASSERT_NE(place, headings.end());
    const auto column = static_cast<std::size_t>(place - headings.begin());
    EXPECT_EQ(Grid(visit).Cell(1, column), "备注1");
    EXPECT_EQ(Grid(visit).ColumnWidth(column), 700);
  });
}

TEST(RecordList, CellsAreCaptionsAndDatesInTheirStyle) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    const auto& grid = Grid(visit);
    ASSERT_EQ(grid.RowCount(), 3);
    EXPECT_EQ(grid.Cell(1, 0), "1985-09");
    EXPECT_EQ(grid.Cell(1, 2), "江淮农业大学");
    EXPECT_EQ(grid.Cell(1, 4), One(*visit.database, "select dmcpt from GB6864 where dmcod='409'"));
    EXPECT_EQ(grid.Cell(3, 0), "1993-09");
    EXPECT_EQ(grid.Row(), 1);
  });
}

TEST(RecordList, ACodeWithoutACaptionKeepsItsRowWithAnEmptyCell) {
  Visit visit;
  visit.database->RunScript("update A02 set A0204='zzz' where A00='" + kPerson + "' and A0299=1");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    ASSERT_EQ(Grid(visit).RowCount(), 3);
    EXPECT_EQ(Grid(visit).Cell(1, 4), "");
    EXPECT_EQ(visit.Text("A02_A0204").Text(), "zzz");
  });
}

TEST(RecordList, OnePersonsRecordsAlone) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const List& list : Lists()) {
      visit.GoTo(list.set);
      EXPECT_EQ(std::to_string(Grid(visit).RowCount()),
                One(*visit.database,
                    "select count(*) from " + std::string(list.set) + " where A00='" + kPerson + "'"));
    }
  });
}

TEST(RecordList, APersonWithoutRecordsHasAnEmptyFormAndNoMove) {
  Visit visit;
  visit.database->RunScript("delete from A04 where A00='" + kPerson +
                            "'; update s_infoitem set FldWidth=100 where tblname='A04' and FldWidth>0");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(Grid(visit).RowCount(), 0);
    EXPECT_EQ(HeadingsOf(Grid(visit)),
              (std::vector<std::string>{"起始年月", "截止时间", "任职单位名称", "职务名称", "序号"}));
    EXPECT_EQ(WidthsOf(Grid(visit)), (Widths{100, 100, 100, 100, 0}));
    EXPECT_TRUE(Grid(visit).Visible());
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "");
    EXPECT_EQ(visit.Caption("A04_A0403_c"), "任职单位名称");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
  });
  // No move: the caption of the number's column was never asked for.
  EXPECT_EQ(std::ranges::count(
                visit.statements,
                "select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A04' and itemname = "
                "'A0499' "),
            0);
}

TEST(RecordList, WithoutRecordsTheFormOfThePageAloneIsFilledFromTheMetadata) {
  Visit visit;
  visit.database->RunScript("delete from A04 where A00='" + kPerson +
                            "'; update s_infoitem set itemdesc='单位' where itemname='A0403'");
  visit.OpenPerson(kPerson, [&] {
    const auto page = visit.Window().LoadUCtrl("ctrlUserA04");
    page->WhInfo().TabId = "A04";
    page->WhInfo().personID = kPerson;
    page->WhInfo().IsMult = true;
    EXPECT_EQ(visit.Caption("A04_A0403_c"), "任职单位名称");
    page->setDGItems();
    EXPECT_EQ(visit.Caption("A04_A0403_c"), "单位");
    EXPECT_EQ(visit.Masked("A04_A0401").Text(), "____年__月");
    EXPECT_EQ(page->FieldItems()->Count(), 5);
    // The form stands ready: an edit is noticed.
    visit.Text("A04_A0403").SetText("x");
    EXPECT_TRUE(page->WhInfo().IsChange);
  });
}

TEST(RecordList, LeavesOpenWithItsFirstRecordOnShow) {
  Visit visit;
  std::shared_ptr<ado::Recordset> rows;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    rows = visit.OnShow().AdodcRs();
    EXPECT_EQ(rows->State(), ado::kStateOpen);
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    visit.GoTo("A12");
    EXPECT_EQ(rows->State(), ado::kStateClosed);
    EXPECT_EQ(visit.OnShow().AdodcRs(), nullptr);
    visit.GoTo("A05");
    rows = visit.OnShow().AdodcRs();
  });
  EXPECT_EQ(rows->State(), ado::kStateClosed);
}

TEST(RecordList, RequiredNoListedFieldAtAllFailsWithARecordsetThatIsNotOpen) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set itemdesc='' where tblname='A04'");
  std::shared_ptr<ado::Recordset> rows;
  visit.OpenPerson(kPerson, [&] {
    const auto page = visit.Window().LoadUCtrl("ctrlUserA04");
    page->WhInfo().TabId = "A04";
    page->WhInfo().personID = kPerson;
    page->WhInfo().IsMult = true;
    EXPECT_THROW(page->setDGItems(), Failure);
    rows = visit.OnShow().AdodcRs();
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->State(), ado::kStateClosed);
  });
  EXPECT_THROW(visit.OpenPerson(kPerson, [&] { visit.GoTo("A04"); }), Failure);
  EXPECT_FALSE(visit.Window().Loaded());
}

TEST(RecordList, RequiredACaptionThatIsNoBareNameFailsTheList) {
  for (const char* caption : {"任职 单位", "任职(单位)", "任职,单位", "任职'单位"}) {
    Visit visit;
    std::string quoted = caption;
    if (const auto quote = quoted.find('\''); quote != std::string::npos) quoted.insert(quote, "'");
    visit.database->RunScript("update s_infoitem set itemdesc='" + quoted + "' where itemname='A0403'");
    EXPECT_THROW(visit.OpenPerson(kPerson, [&] { visit.GoTo("A04"); }), Failure) << caption;
    EXPECT_FALSE(visit.Window().Loaded());
    visit.OpenPerson(kPerson, [&] { visit.GoTo("A05"); });
  }
}

TEST(RecordList, RequiredACaptionWithABlankIsFineWhereNoListShowsIt) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set itemdesc='主要 成就' where itemname='A1201'");
  std::string shown;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A12");
    shown = visit.OnShow().Name();
  });
  EXPECT_EQ(shown, "ctrlUserA12");
}

TEST(RecordList, ATableWithoutCaptionsFailsTheList) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set CodeTable='A05' where itemname='A0404'");
  EXPECT_THROW(visit.OpenPerson(kPerson, [&] { visit.GoTo("A04"); }), Failure);
}

TEST(RecordList, RequiredATypeInSmallLettersHasNoLimitOnItsControl) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set FieldType='varchar' where itemname='A0403'");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_EQ(visit.Text("A04_A0403").MaxLength(), 0U);
    EXPECT_EQ(visit.Text("A04_A0404").MaxLength(), 60U);
    visit.user.Press('N', toolkit::kCtrl);
    visit.user.Type("202001");
    visit.user.Tab();
    visit.user.Tab();
    visit.user.Type("水稻学会");
    visit.user.Tab();
    visit.user.Type("理事");
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(One(*visit.database, "select count(*) from A04 where A0403='水稻学会' and A0404='理事'"), "1");
}

TEST(RecordList, AFieldThatDoesNotSayWhetherItMayStayEmptyMayDoSo) {
  Visit visit;
  visit.database->RunScript("update s_infoitem set \"IsNUll\"=null where tblname='A04'");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    EXPECT_FALSE(visit.user.Find<toolkit::Label>("A04_A0403_c")->FontBold());
    visit.user.Press('N', toolkit::kCtrl);
    visit.user.Press('S', toolkit::kCtrl);
  });
  EXPECT_EQ(One(*visit.database, "select count(*) from A04 where A00='" + kPerson + "'"), "5");
}

TEST(RecordList, BuildsAgainOnlyWithANewPage) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.database->RunScript("insert into A04(A00,A0403,A0499) values('" + kPerson + "','新',9)");
    EXPECT_EQ(Grid(visit).RowCount(), 4);
    visit.user.ClickRow(2);
    visit.user.Press('N', toolkit::kCtrl);
    EXPECT_EQ(Grid(visit).RowCount(), 4);
    visit.GoTo("A04");
    EXPECT_EQ(Grid(visit).RowCount(), 5);
  });
}

TEST(RecordList, ItsFirstMoveTellsBeforeAndAfter) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    std::vector<std::string> told;
    auto& rows = *visit.OnShow().AdodcRs();
    const auto before = rows.WillMove.Subscribe(
        [&](std::int32_t, std::int32_t&, ado::Recordset&) { told.push_back("will"); });
    const auto after = rows.MoveComplete.Subscribe(
        [&](std::int32_t, std::int32_t&, ado::Recordset&) { told.push_back("done"); });
    rows.MoveFirst();
    EXPECT_EQ(told, (std::vector<std::string>{"will", "done"}));
  });
  // Once when the list was built, once more just now.
  EXPECT_EQ(std::ranges::count(
                visit.statements,
                "select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A04' and itemname = "
                "'A0499' "),
            2);
}

TEST(RecordList, RequiredAStyleThatIsNotUnderstoodIsGarbled) {
  Visit visit;
  visit.database->RunScript(
      "update s_infoitem set style='mmmm dddd' where itemname='A0401';"
      "update s_infoitem set style='Short Date' where itemname='A0402';"
      "update s_infoitem set style='@' where itemname='A0403';"
      "update s_infoitem set style='>' where itemname='A0404'");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    const auto& grid = Grid(visit);
    EXPECT_EQ(grid.Cell(1, 0), "0505 0101");
    EXPECT_EQ(grid.Cell(1, 1), "00ort 1ate");
    EXPECT_EQ(grid.Cell(1, 2), "江淮省作物学会");
    EXPECT_EQ(grid.Cell(1, 3), "副理事长");
  });
}

}  // namespace
}  // namespace dossierkit::tests
