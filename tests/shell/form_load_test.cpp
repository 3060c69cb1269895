// What happens while the window loads: menu, name, first page.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using FormLoad = ShellTest;

const Messages kRefused = {{"无法维护此人信息。可能不存在此人Id号或Id号重复。", kOk, "人员维护"}};

TEST_F(FormLoad, AStoredPersonIsReadByTheseStatements) {
  visit.Open([&] { EXPECT_EQ(visit.statements, Join({kMenu, kName, kOpenA01})); });
}

TEST_F(FormLoad, ANewPersonIsReadByTheseStatements) {
  visit.OpenNew([&] {
    EXPECT_EQ(
        visit.statements,
        Join({kMenu,
              {"select count(A00) from a01 where a00 =''",
               " select Property from s_infotable  where TblName ='A01'",
               " select * from s_infoitem  where tblname ='A01'",
               "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname "
               "='A01'  and orderfield<>'' ",
               "select count(*) from A01 where A00 =''", " delete from S_GUID ",
               "insert into S_GUID(val) values('a')", "select id from S_GUID where val='a'",
               " select * from s_infoitem  where tblname ='A01'",
               "select * from A01 where a00 ='" + visit.Window().personID + "'",
               "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A01'"}}));
  });
}

TEST_F(FormLoad, TheMenuHoldsTheSetsInTheirOrderAndTheExtraItemLast) {
  visit.Open([&] {
    const auto& menu = visit.Window().VMenu1();
    EXPECT_EQ(menu.menucaption(), "信息集");
    EXPECT_EQ(visit.Window().SetCount, 15);
    EXPECT_EQ(menu.menuitemsmax(), 16);
    Statements items;
    for (const auto& item : menu.Items()) items.push_back(item.key + item.caption);
    EXPECT_EQ(items, (Statements{"A01基本信息", "A02学习经历", "A03工作经历", "A04主要兼职", "A05访问进修",
                                 "A06学术会议", "A08专业成果", "A09获奖信息", "A10论文著作", "A11成果介绍",
                                 "A12主要成就", "A13培养人才", "A14领域认识", "A15近期工作", "A21授权专利",
                                 "B01单位推荐情况"}));
  });
}

TEST_F(FormLoad, OtherPropOrdersTheMenuAndOnlyNamesThatBeginWithAReachIt) {
  Script(
      "update s_infotable set OtherProp = 99 where tblname = 'A03';"
      "insert into s_infotable values ('b07','B',0,null,null,1);"
      "insert into s_infotable values ('CA1','C',0,null,null,1);"
      "insert into s_infotable values ('a99','小写',-5,null,null,1);"
      "update s_infotable set OtherProp = -9 where tblname = 'A01';");
  visit.Open([&] {
    const auto& items = visit.Window().VMenu1().Items();
    ASSERT_EQ(items.size(), 17u);
    EXPECT_EQ(items[0].key, "A01");
    EXPECT_EQ(items[1].key, "a99");
    EXPECT_EQ(items[1].caption, "小写");
    EXPECT_EQ(items[15].key, "A03");
    EXPECT_EQ(items[16].key, "B01");
  });
}

TEST_F(FormLoad, ThePersonTypeNamesTheExtraItem) {
  const std::vector<std::pair<std::int16_t, std::string>> rows = {{std::int16_t{1}, "B01单位推荐情况"},
                                                                  {std::int16_t{2}, "B02个人自荐情况"},
                                                                  {std::int16_t{3}, "B03获奖者推荐情况"}};
  for (const auto& row : rows) {
    visit.component.PersonType = row.first;
    visit.Open([&] {
      const auto& item = visit.Window().VMenu1().Items().back();
      EXPECT_EQ(item.key + item.caption, row.second);
      EXPECT_EQ(visit.Window().VMenu1().Items().size(), 16u);
    });
  }
}

TEST_F(FormLoad, AnyOtherPersonTypeLeavesTheExtraItemAsDesigned) {
  for (const std::int16_t type : {std::int16_t{0}, std::int16_t{4}, std::int16_t{-1}}) {
    visit.component.PersonType = type;
    visit.Open([&] {
      const auto& item = visit.Window().VMenu1().Items().back();
      EXPECT_EQ(item.key, "");
      EXPECT_EQ(item.caption, "Item16");
      EXPECT_EQ(visit.Window().VMenu1().Items().size(), 16u);
    });
  }
}

TEST_F(FormLoad, AStoredPersonsNameIsShownBeforeTheFirstPageIsBuilt) {
  std::string name_at_first_page;
  visit.component.SetConnection(
      std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace& trace) {
        if (trace.statement == " select Property from s_infotable  where TblName ='A01'") {
          name_at_first_page = visit.Window().labPersonName().Caption();
        }
      }));
  visit.Open([] {});
  EXPECT_EQ(name_at_first_page, "陆怀谷");
}

TEST_F(FormLoad, ANameThatIsNullIsShownEmpty) {
  Script("update A01 set A0101 = null where A00 = '" + kPerson + "'");
  visit.Open([&] { EXPECT_EQ(visit.Caption("labPersonName"), ""); });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FormLoad, OperationType3GivesDealType3) {
  visit.Open([&] { EXPECT_EQ(visit.Window().DealType, 3); });
}

TEST_F(FormLoad, OperationType0GivesDealType0AndNoName) {
  visit.Open([] {});
  visit.OpenNew([&] {
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Caption("labPersonName"), "");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
}

TEST_F(FormLoad, OperationType0GivesDealType0ForAStoredIdToo) {
  visit.Open([] {});
  visit.component.OperationType = 0;
  visit.Open([&] {
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
  });
}

TEST_F(FormLoad, OperationType3GivesDealType3BeforeTheNameIsRead) {
  visit.failing->FailAt(2);
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kEngineFailure);
  EXPECT_EQ(visit.statements, Join({kMenu, kName}));
  EXPECT_EQ(visit.Window().DealType, 3);
}

// --- operation types without a meaning ----------------------------------------------------------

TEST_F(FormLoad, RequiredAnotherOperationTypeBehavesAsANewPersonInTheFirstVisit) {
  for (const std::int16_t type : {std::int16_t{1}, std::int16_t{2}, std::int16_t{-1}, std::int16_t{4}}) {
    Visit first;
    first.component.OperationType = type;
    first.Open([&] {
      EXPECT_EQ(first.Window().DealType, 0);
      // The stored row is counted, so no new person is drawn, and its values are not read.
      EXPECT_EQ(first.Window().personID, kPerson);
      EXPECT_EQ(first.Text("A01_A0101").Text(), "");
    });
  }
}

TEST_F(FormLoad, AnotherOperationTypeLeavesTheNameAlone) {
  const auto named = [&](std::int16_t type) {
    visit.component.OperationType = type;
    // Something stands there before the name would be shown.
    visit.component.SetConnection(
        std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace& trace) {
          if (trace.statement == kMenu[0]) visit.Window().labPersonName().SetCaption("before");
        }));
    std::string name;
    visit.Open([&] { name = visit.Caption("labPersonName"); });
    return name;
  };
  for (const std::int16_t type : {std::int16_t{1}, std::int16_t{2}, std::int16_t{-1}, std::int16_t{4}})
    EXPECT_EQ(named(type), "before") << type;
  EXPECT_EQ(named(0), "");
  EXPECT_EQ(named(3), "陆怀谷");
}

TEST_F(FormLoad, RequiredAnotherOperationTypeKeepsTheDealTypeOfTheFormerVisit) {
  visit.Open([] {});
  visit.component.OperationType = 1;
  visit.Open([&] {
    EXPECT_EQ(visit.Window().DealType, 3);
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "陆怀谷");
    EXPECT_EQ(visit.statements.size(), 2 * Join({kMenu, kOpenA01}).size() + 1);
  });
  visit.OpenNew([] {});
  visit.component.OperationType = 2;
  visit.component.personID = kPerson;
  visit.Open([&] {
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
  });
}

TEST_F(FormLoad, AnotherOperationTypeDoesNotLookForThePersonsName) {
  visit.Open([] {});
  visit.component.OperationType = 2;
  const auto statements = During([&] { visit.Open([] {}); });
  EXPECT_EQ(statements, Join({kMenu, kOpenA01}));
}

TEST_F(FormLoad, RequiredANewPersonWithAStoredIdKeepsTheIdAndShowsNoValue) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    EXPECT_EQ(
        visit.statements,
        Join({kMenu,
              {"select count(A00) from a01 where a00 ='" + kPerson + "'",
               " select Property from s_infotable  where TblName ='A01'",
               " select * from s_infoitem  where tblname ='A01'",
               "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname "
               "='A01'  and orderfield<>'' ",
               "select count(*) from A01 where A00 ='" + kPerson + "'",
               "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A01'"}}));
    EXPECT_EQ(visit.Window().personID, kPerson);
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
}

// --- a person who cannot be opened ---------------------------------------------------------------

TEST_F(FormLoad, APersonWhoIsNotFoundIsRefused) {
  visit.component.personID = "nobody";
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
  EXPECT_EQ(Shown(), kRefused);
  EXPECT_EQ(visit.statements, Join({kMenu, {"select a0101 from a01 where a00='nobody'"}}));
  EXPECT_FALSE(visit.Window().InVisit());
  EXPECT_EQ(visit.desktop.TopmostForm(), nullptr);
}

TEST_F(FormLoad, APersonWhoIsStoredTwiceIsRefused) {
  Script("insert into A01 select * from A01 where A00 = '" + kPerson + "'");
  const auto before = visit.database->Bytes();
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
  EXPECT_EQ(Shown(), kRefused);
  EXPECT_EQ(visit.statements, Join({kMenu, kName}));
  EXPECT_EQ(visit.database->Bytes(), before);
}

TEST_F(FormLoad, TheWindowIsUnloadedBehindTheBoxThatRefuses) {
  bool loaded = false;
  visit.script.on_message = [&](const Message&) { loaded = visit.Window().Loaded(); };
  visit.component.personID = "nobody";
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
  EXPECT_TRUE(loaded);
  EXPECT_FALSE(visit.Window().Loaded());
  EXPECT_EQ(Shown(), kRefused);
}

TEST_F(FormLoad, TheVisitAfterARefusalWorks) {
  visit.component.personID = "nobody";
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
  EXPECT_TRUE(visit.OpenPerson(kPerson, [&] {
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "陆怀谷");
    visit.user.ClickToolbar("Save");
  }));
  EXPECT_EQ(Shown(), kRefused);
}

TEST_F(FormLoad, ARefusalAfterAVisitShowsNothingOfTheFormerPerson) {
  visit.Open([&] { visit.GoTo("A03"); });
  visit.component.personID = "nobody";
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
  EXPECT_FALSE(visit.Window().Loaded());
}

// --- a database that fails -----------------------------------------------------------------------

TEST_F(FormLoad, AMissingTableFailsTheCall) {
  for (const char* table : {"s_infotable", "s_infoitem", "A01", "GB2261", "S_GUID"}) {
    Visit each;
    each.database->RunScript("drop table " + std::string(table));
    each.component.OperationType = std::string(table) == "S_GUID" ? 0 : 3;
    if (each.component.OperationType == 0) each.component.personID.clear();
    EXPECT_NE(NumberOfFailure([&] { each.component.ShowDossier(); }), 0) << table;
    EXPECT_FALSE(each.Window().InVisit()) << table;
    EXPECT_TRUE(each.script.messages.empty()) << table;
    each.component.SetConnection(SampleDatabase());
    EXPECT_FALSE(each.Open([&] { EXPECT_TRUE(each.Window().GetUserCtrl()); })) << table;
  }
}

TEST_F(FormLoad, AFailureAtAnyStatementReachesTheHostAndTheNextVisitWorks) {
  const std::size_t count = Join({kMenu, kName, kOpenA01}).size();
  for (std::size_t k = 1; k <= count; ++k) {
    visit.failing->FailAt(k);
    visit.statements.clear();
    EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kEngineFailure) << k;
    EXPECT_EQ(visit.statements.size(), k);
    EXPECT_FALSE(visit.Window().InVisit()) << k;
  }
  visit.failing->FailAt(0);
  visit.Open([&] { EXPECT_EQ(State(), "当前操作：修改 on on on"); });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FormLoad, ASetWithoutACaptionFailsTheCall) {
  Script("update s_infotable set tbldesc = null where tblname = 'A05'");
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kInvalidUseOfNull);
  EXPECT_EQ(visit.statements, kMenu);
  EXPECT_FALSE(visit.Window().InVisit());
}

TEST_F(FormLoad, RequiredTheMenuCountsItsSetsIn16Bits) {
  const auto open_with = [&](int sets) {
    Script("delete from s_infotable where tblname like 'a9%'");
    Script(
        "insert into s_infotable(tblname,tbldesc,OtherProp,Property) "
        "with recursive n(i) as (select 16 union all select i + 1 from n where i < " +
        std::to_string(sets) + ") select 'A9' || i, 'x', 1000 + i, 1=0 from n");
    return NumberOfFailure([&] { visit.component.ShowDossier(); });
  };
  EXPECT_EQ(open_with(32767), environment::kOverflow);
  EXPECT_EQ(open_with(32768), environment::kOverflow);
  EXPECT_FALSE(visit.Window().InVisit());
}

// --- a menu without sets -------------------------------------------------------------------------

TEST_F(FormLoad, RequiredWithoutSetsTheMenuKeepsItsDesignItems) {
  Script("delete from s_infotable where tblname like 'a%'");
  visit.Open([&] {
    const auto& menu = visit.Window().VMenu1();
    EXPECT_EQ(visit.Window().SetCount, 0);
    EXPECT_EQ(menu.menuitemsmax(), 16);
    // The extra item is number SetCount + 1, the first.
    EXPECT_EQ(menu.Items()[0].key, "B01");
    EXPECT_EQ(menu.Items()[0].caption, "单位推荐情况");
    EXPECT_EQ(menu.Items()[1].caption, "Item2");
    EXPECT_EQ(menu.Items()[15].caption, "Item16");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserB01");
  });
}

TEST_F(FormLoad, RequiredWithoutSetsSetCountStaysAtItsFormerValue) {
  visit.Open([] {});
  Script("delete from s_infotable where tblname like 'a%'");
  // The first item has no key, so there is no page to show.
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kUnknownClass);
  EXPECT_EQ(visit.Window().SetCount, 15);
}

TEST_F(FormLoad, ASetMoreOrLessChangesTheNumberOfItems) {
  Script("delete from s_infotable where tblname in ('A02','A03','A04')");
  visit.Open([&] {
    EXPECT_EQ(visit.Window().SetCount, 12);
    EXPECT_EQ(visit.Window().VMenu1().menuitemsmax(), 13);
    EXPECT_EQ(visit.Window().VMenu1().Items()[12].key, "B01");
  });
}

}  // namespace
}  // namespace dossierkit::tests
