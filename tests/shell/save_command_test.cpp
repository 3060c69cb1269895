// The command Save, in each way of writing a record.
#include <new>

#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using SaveCommand = ShellTest;

TEST_F(SaveCommand, BasicDataOfAStoredPersonAreUpdated) {
  EXPECT_TRUE(visit.Open([&] {
    visit.Text("A01_A0109").SetText("农学");
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Save"); }),
              Join({{"update A01 set A0101 = '陆怀谷',A0102 = '1',A0103 = '01',A0114 = '320481',A0104 = "
                     "'1968年03月12日',"
                     "A0105 = '01',A0106 = '11',A0107 = '209',A0140 = '江淮农业大学',A0108 = "
                     "'1996年07月',A0109 = '农学',"
                     "A0110 = '水稻分子育种',A0116 = '1989年08月',A0115 = "
                     "'江淮省农业科学院粮食作物研究所',A0113 = '305',"
                     "A0121 = '江淮省云溪市学田路18号',A0117 = '210000',A0118 = '000-00000101',A0119 = "
                     "'10000000001',"
                     "A0120 = 'luhuaigu@example.com',A0112 = '611',A0122 = '210',A0123 = '30',A0124 = "
                     "'20',A0125 = '20',"
                     "A0128 = '2010',A0129 = '',A0127 = '2022',A0131 = '320481196803120316' where A00='" +
                         kPerson + "'",
                     "select iif(a0101 is null,'',a0101) from a01 where a00='" + kPerson + "'"},
                    kOpenA01}));
    EXPECT_TRUE(visit.Window().IsSaved);
    EXPECT_EQ(visit.Window().DealType, 3);
    EXPECT_EQ(visit.Text("A01_A0109").Text(), "农学");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  }));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(SaveCommand, ARecordOfASingleSetIsReplaced) {
  EXPECT_TRUE(visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("新的文字");
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Save"); }),
              Join({{"delete from A12 where A00='" + kPerson + "' ",
                     "insert into A12( A00 ,A1201) values('" + kPerson + "','新的文字')"},
                    kOpenA12}));
    EXPECT_EQ(State(), "当前操作：修改 on off off");
  }));
}

TEST_F(SaveCommand, ANewRecordOfASingleSetIsThenStored) {
  Script("delete from A12 where A00='" + kPerson + "'");
  visit.Open([&] {
    visit.GoTo("A12");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    visit.Text("A12_A1201").SetText("新的文字");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
    EXPECT_EQ(visit.Text("A12_A1201").Text(), "新的文字");
  });
}

TEST_F(SaveCommand, ARecordOfManyIsReplacedAndTheNextNewOneOpens) {
  EXPECT_TRUE(visit.Open([&] {
    visit.GoTo("A04");
    const auto page = visit.Window().GetUserCtrl();
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Save"); }),
              Join({kLimitA04,
                    {"delete from A04 where A00='" + kPerson + "'  and A0499 = 1",
                     "insert into A04( A00 ,A0499,A0401,A0402,A0403,A0404) values('" + kPerson +
                         "','1','2008年05月','2018年04月','江淮省作物学会','副理事长')",
                     "update A04 set A0499 = A0499 +200 where a00='" + kPerson + "'",
                     "select * from A04 where A00 ='" + kPerson + "' order by A0401",
                     "update A04 set A0499 = 1 where a00='" + kPerson + "' and A0499 = 201",
                     "update A04 set A0499 = 2 where a00='" + kPerson + "' and A0499 = 202",
                     "update A04 set A0499 = 3 where a00='" + kPerson + "' and A0499 = 203",
                     "update A04 set A0499 = 4 where a00='" + kPerson + "' and A0499 = 204"},
                    kOpenA04,
                    AddA04("5")}));
    EXPECT_NE(visit.Window().GetUserCtrl(), page) << "the saved page is dropped";
    EXPECT_TRUE(page->Removed());
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 5);
  }));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(SaveCommand, ANewRecordOfManyTakesItsPlaceInTheOrder) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    visit.Masked("A04_A0401").SetText("2001年01月");
    visit.Text("A04_A0403").SetText("学会");
    visit.Text("A04_A0404").SetText("理事");
    const auto statements = During([&] { visit.user.ClickToolbar("Save"); });
    const Statements written(statements.begin() + 2, statements.begin() + 11);
    EXPECT_EQ(written, (Statements{
                           "delete from A04 where A00='" + kPerson + "'  and A0499 = 5",
                           "insert into A04( A00 ,A0499,A0401,A0403,A0404) values('" + kPerson +
                               "','5','2001年01月','学会','理事')",
                           "update A04 set A0499 = A0499 +200 where a00='" + kPerson + "'",
                           "select * from A04 where A00 ='" + kPerson + "' order by A0401",
                           "update A04 set A0499 = 1 where a00='" + kPerson + "' and A0499 = 205",
                           "update A04 set A0499 = 2 where a00='" + kPerson + "' and A0499 = 201",
                           "update A04 set A0499 = 3 where a00='" + kPerson + "' and A0499 = 202",
                           "update A04 set A0499 = 4 where a00='" + kPerson + "' and A0499 = 203",
                           "update A04 set A0499 = 5 where a00='" + kPerson + "' and A0499 = 204",
                       }));
  });
  EXPECT_EQ(Column(*visit.database, "select A0404 from A04 where A00='" + kPerson + "' order by A0499"),
            (Statements{"理事", "副理事长", "副主编", "水稻专业组组长", "兼职博士生导师"}));
  EXPECT_EQ(Numbers("A04"), (Statements{"1", "2", "3", "4", "5"}));
}

TEST_F(SaveCommand, RequiredARecordSavedIsNotSelectedAfterwards) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickRow(3);
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), 1);
  });
}

TEST_F(SaveCommand, AFailedCheckLeavesThePageAsItIs) {
  EXPECT_FALSE(visit.Open([&] {
    visit.Text("A01_A0101").SetText("");
    const auto page = visit.Window().GetUserCtrl();
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Save"); }).empty());
    EXPECT_EQ(visit.Window().GetUserCtrl(), page);
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Caption("labPersonName"), "陆怀谷");
  }));
  EXPECT_EQ(Shown(), (Messages{{"姓名 为必填项", kOk, "错误信息"}}));
}

TEST_F(SaveCommand, RequiredARecordIsDeletedBeforeItIsChecked) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0403").SetText("");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(Numbers("A04"), (Statements{"2", "3", "4"}));
    visit.Text("A04_A0403").SetText("学会");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Numbers("A04"), (Statements{"1", "2", "3", "4"}));
  EXPECT_EQ(Shown(), (Messages{{"任职单位名称 为必填项", kOk, "错误信息"}}));
}

TEST_F(SaveCommand, AFailureOfTheWritingIsShownAndTheStepsDoneStay) {
  // Statements 1 and 2 look up the limit, 3 to 10 write.
  const std::vector<Statements> left = {
      {"1", "2", "3", "4"},          // the delete failed
      {"2", "3", "4"},               // the insert failed
      {"1", "2", "3", "4"},          // the raising failed
      {"201", "202", "203", "204"},  // the reading failed
      {"201", "202", "203", "204"},  // the first number failed
      {"1", "202", "203", "204"},
      {"1", "2", "203", "204"},
      {"1", "2", "3", "204"},
  };
  for (std::size_t i = 0; i < left.size(); ++i) {
    Visit each;
    EXPECT_FALSE(each.Open([&] {
      each.GoTo("A04");
      each.Text("A04_A0404").SetText("理事");
      const auto page = each.Window().GetUserCtrl();
      each.failing->FailAt(i + 3);
      each.user.ClickToolbar("Save");
      EXPECT_EQ(each.Window().GetUserCtrl(), page);
      EXPECT_TRUE(each.OnShow().WhInfo().IsChange);
      EXPECT_FALSE(each.Window().IsSaved);
    }));
    EXPECT_EQ(each.script.messages, (Messages{{"磁盘或网络错误。", kOk, "信息保存"}})) << i;
    EXPECT_EQ(Column(*each.database, "select A0499 from A04 where A00='" + kPerson + "' order by A0499"),
              left[i])
        << i;
  }
}

TEST_F(SaveCommand, AFailureThatIsNoneOfTheEnvironmentsIsShownToo) {
  EXPECT_FALSE(visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("新的文字");
    visit.RunOutOfMemoryAt("insert into A12");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA12");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  }));
  EXPECT_EQ(Shown(), (Messages{{std::bad_alloc().what(), kOk, "信息保存"}}));
}

TEST_F(SaveCommand, AFailureOutsideTheWritingReachesTheHost) {
  // The limit, then what follows the writing: the reload and the next new record.
  for (const std::size_t k : {1u, 2u, 11u, 15u, 22u, 23u, 27u}) {
    Visit each;
    EXPECT_EQ(NumberOfFailure([&] {
                each.Open([&] {
                  each.GoTo("A04");
                  each.failing->FailAt(k);
                  each.user.ClickToolbar("Save");
                  EXPECT_EQ(each.Window().IsSaved, k > 10);
                });
              }),
              environment::kEngineFailure)
        << k;
    EXPECT_FALSE(each.Window().InVisit());
    EXPECT_TRUE(each.script.messages.empty());
  }
}

TEST_F(SaveCommand, AnApostropheBreaksTheStatementAndTheRecordIsGone) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("'");
    visit.user.ClickToolbar("Save");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
  ASSERT_EQ(Shown().size(), 1u);
  EXPECT_EQ(Shown()[0].title, "信息保存");
  EXPECT_EQ(Value("select count(*) from A12 where A00='" + kPerson + "'"), "0");
}

TEST_F(SaveCommand, RequiredBeyondTwoHundredRecordsTwoGetOneNumber) {
  Script("delete from A15 where A00='" + kPerson +
         "';"
         "update s_infotable set maxnumber = null, orderfield = 'A1501' where tblname = 'A15';"
         "with recursive n(i) as (select 1 union all select i + 1 from n where i < 202) "
         "insert into A15 (A00, A1501, A1599) select '" +
         kPerson +
         "', 'p', i from n;"
         // Number 1 comes last: raised to 201, it meets the record that has become number 201.
         "update A15 set A1501 = 'z' where A00='" +
         kPerson + "' and A1599 = 1");
  visit.Open([&] {
    visit.GoTo("A15");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(Shown().empty());
  const auto numbers = Numbers("A15");
  ASSERT_EQ(numbers.size(), 202u);
  EXPECT_EQ(numbers[199], "200");
  EXPECT_EQ(numbers[200], "202");
  EXPECT_EQ(numbers[201], "202");
}

TEST_F(SaveCommand, SaveIsAlwaysEnabled) {
  visit.OpenNew([&] {
    for (const char* key : {"Save", "Cancel", "Exit"}) EXPECT_TRUE(visit.Enabled(key));
  });
  visit.Open([&] {
    for (const char* set : {"A01", "A04", "A12", "B01"}) {
      visit.GoTo(set);
      for (const char* key : {"Save", "Cancel", "Exit"}) EXPECT_TRUE(visit.Enabled(key)) << set;
    }
  });
}

}  // namespace
}  // namespace dossierkit::tests
