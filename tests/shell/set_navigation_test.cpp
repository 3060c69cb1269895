// A click on the menu: the statements of each kind of set, and what the window then shows.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using SetNavigation = ShellTest;

// --- the statements of a click -------------------------------------------------------------------

TEST_F(SetNavigation, ASingleSetWithItsRow) {
  visit.Open([&] {
    EXPECT_EQ(During([&] { visit.GoTo("A12"); }), kOpenA12);
    EXPECT_EQ(State(), "当前操作：修改 on off off");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 0);
    EXPECT_FALSE(visit.OnShow().WhInfo().IsMult);
    EXPECT_EQ(visit.OnShow().WhInfo().FldOrder, "");
  });
}

TEST_F(SetNavigation, ASingleSetWithoutARowOpensAsANewRecord) {
  Script("delete from A12 where A00='" + kPerson + "'");
  visit.Open([&] {
    EXPECT_EQ(During([&] { visit.GoTo("A12"); }),
              (Statements{
                  "select count(A00) from a01 where a00 ='" + kPerson + "'",
                  " select Property from s_infotable  where TblName ='A12'",
                  " select * from s_infoitem  where tblname ='A12'",
                  "select * from A12 where a00 ='" + kPerson + "'",
                  "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where "
                  "tblname ='A12'  "
                  "and orderfield<>'' ",
                  "select count(*) from A12 where A00 ='" + kPerson + "'",
                  " select * from s_infoitem  where tblname ='A12'",
                  "select * from A12 where a00 ='" + kPerson + "'",
                  "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A12'",
              }));
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 0);
  });
}

TEST_F(SetNavigation, ASetOfManyRecordsWithRows) {
  visit.Open([&] {
    EXPECT_EQ(During([&] { visit.GoTo("A04"); }), kOpenA04);
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_TRUE(visit.OnShow().WhInfo().IsMult);
    EXPECT_EQ(visit.OnShow().WhInfo().FldOrder, "A0401");
    EXPECT_EQ(visit.OnShow().WhInfo().TabId, "A04");
    EXPECT_EQ(visit.OnShow().WhInfo().personID, kPerson);
  });
}

TEST_F(SetNavigation, ASetOfManyRecordsWithoutRowsOpensAsANewRecord) {
  Script("delete from A04 where A00='" + kPerson + "'");
  visit.Open([&] {
    EXPECT_EQ(During([&] { visit.GoTo("A04"); }), Join({kListA04,
                                                        {" select * from s_infoitem  where tblname ='A04'"},
                                                        kCountA04,
                                                        AddA04("1"),
                                                        kTitleA04}));
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
  });
}

TEST_F(SetNavigation, ASetOfManyRecordsWithCodedFields) {
  const Statements fields = {
      " select * from s_infoitem  where tblname ='A03'",
      "select * from A03 where a00 ='" + kPerson + "' and A0399=1",
      "select dmcpt from GB8561 where dmcod='095'",
      "select dmcpt from LCZW where dmcod='999'",
  };
  visit.Open([&] {
    EXPECT_EQ(
        During([&] { visit.GoTo("A03"); }),
        Join({{"select count(A00) from a01 where a00 ='" + kPerson + "'",
               " select Property from s_infotable  where TblName ='A03'"},
              fields,
              {"select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname "
               "='A03'  "
               "and orderfield<>'' ",
               "select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,iif(style is "
               "null,'',style) "
               "as style ,iif(fldwidth is null,2000,fldwidth) as fldwidth from  s_infoitem where tblname "
               "='A03' and "
               "itemname <> 'A00' and itemname <>'' and itemdesc <>''   order by fldorder ",
               "select format(A03.A0301,'yyyy-mm') as 起始年月, format(A03.A0301A,'yyyy-mm') as 截止年月, "
               "A03.A0302 as "
               "工作单位, GB8561_A0304.dmcpt as 职称, LCZW_A0303.dmcpt as 行政职务, A03.A0399 as 序号 from "
               "(( A03  left "
               "join GB8561 GB8561_A0304 on A03.A0304=GB8561_A0304.dmcod)   left join LCZW LCZW_A0303 on "
               "A03.A0303=LCZW_A0303.dmcod)  Where A03.A00='" +
                   kPerson + "' order by A0301",
               "select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A03' and itemname = "
               "'A0399' "},
              fields,
              {"select count(*) from A03 where A00 ='" + kPerson + "' and A0399 >0",
               "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A03'"}}));
  });
}

TEST_F(SetNavigation, TheExtraItemOpensItsSet) {
  visit.Open([&] {
    EXPECT_EQ(During([&] { visit.user.ClickMenu(16); }),
              (Statements{
                  "select count(A00) from a01 where a00 ='" + kPerson + "'",
                  " select Property from s_infotable  where TblName ='B01'",
                  " select * from s_infoitem  where tblname ='B01'",
                  "select * from B01 where a00 ='" + kPerson + "'",
                  "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where "
                  "tblname ='B01'  "
                  "and orderfield<>'' ",
                  "select count(*) from B01 where A00 ='" + kPerson + "'",
                  "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='B01'",
              }));
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserB01");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
  });
}

TEST_F(SetNavigation, AClickOnTheSelectedItemReloads) {
  visit.Open([&] {
    const auto* before = visit.Window().GetUserCtrl().get();
    const auto keep = visit.Window().GetUserCtrl();
    EXPECT_EQ(During([&] { visit.GoTo("A01"); }), kOpenA01);
    EXPECT_NE(visit.Window().GetUserCtrl().get(), before);
    EXPECT_TRUE(keep->Removed());
    EXPECT_EQ(visit.Window().CurItem, 1);
    EXPECT_EQ(visit.Window().PrevItem, 1);
  });
}

TEST_F(SetNavigation, NothingIsCachedBetweenClicks) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.GoTo("A12");
    EXPECT_EQ(During([&] { visit.GoTo("A04"); }), kOpenA04);
  });
}

TEST_F(SetNavigation, ASetIsFilledFromMetadataAloneWhileThePersonIsNotMarkedAsStored) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    EXPECT_EQ(During([&] { visit.GoTo("A12"); }),
              (Statements{
                  "select count(A00) from a01 where a00 ='" + kPerson + "'",
                  " select Property from s_infotable  where TblName ='A12'",
                  " select * from s_infoitem  where tblname ='A12'",
                  "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where "
                  "tblname ='A12'  "
                  "and orderfield<>'' ",
                  "select count(*) from A12 where A00 ='" + kPerson + "'",
                  "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A12'",
              }));
    EXPECT_EQ(visit.Text("A12_A1201").Text(), "");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
  });
}

TEST_F(SetNavigation, RequiredARecordFromAListShowsItsValuesEvenWhenMetadataAloneWasAskedFor) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "江淮省作物学会");
    // The window then puts the metadata alone in place of the record's fields.
    EXPECT_EQ(visit.OnShow().FieldItems()->Item("A04_A0403")->Dmcod, environment::Value());
  });
}

// --- the basic set comes first -------------------------------------------------------------------

TEST_F(SetNavigation, AnyItemButTheFirstIsRefusedForAPersonNotStored) {
  visit.OpenNew([&] {
    const std::string person = visit.Window().personID;
    EXPECT_EQ(During([&] { visit.GoTo("A02"); }),
              (Statements{"select count(A00) from a01 where a00 ='" + person + "'"}));
    EXPECT_EQ(Shown(), (Messages{{"必须先维护基本信息集，然后再维护其它信息集。", kOk, "人员维护"}}));
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01");
    for (int item = 2; item <= 16; ++item) visit.user.ClickMenu(item);
    EXPECT_EQ(Shown().size(), 16u);
  });
}

TEST_F(SetNavigation, RequiredARefusalLeavesItemsAndIconsHalfUndone) {
  visit.OpenNew([&] {
    auto& window = visit.Window();
    visit.GoTo("A03");
    EXPECT_EQ(window.CurItem, 3);
    EXPECT_EQ(window.PrevItem, 1);
    EXPECT_EQ(window.VMenu1().menucur(), 1);
    EXPECT_EQ(window.VMenu1().menuitemcur(), 1);
    EXPECT_EQ(window.VMenu1().Items()[2].icon, "/opt/dossier\\USER.ICO");
    EXPECT_EQ(window.VMenu1().Items()[0].icon, "/opt/dossier\\xinxj.ico");
    // The next click compares against the refused item.
    visit.GoTo("A01");
    EXPECT_EQ(window.CurItem, 1);
    EXPECT_EQ(window.PrevItem, 3);
    EXPECT_EQ(window.VMenu1().Items()[2].icon, "/opt/dossier\\xinxj.ico");
    EXPECT_EQ(window.VMenu1().Items()[0].icon, "/opt/dossier\\USER.ICO");
  });
}

TEST_F(SetNavigation, RequiredTheEditsOfThePageOnShowSurviveARefusalAfterNo) {
  visit.OpenNew([&] {
    visit.Text("A01_A0101").SetText("王新");
    Answer(toolkit::kAnswerNo);
    visit.GoTo("A02");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "王新");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
}

TEST_F(SetNavigation, APersonStoredTwiceMeanwhileIsRefusedAllSetsButTheFirst) {
  visit.Open([&] {
    Script("insert into A01 select * from A01 where A00 = '" + kPerson + "'");
    visit.GoTo("A02");
    visit.GoTo("A01");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01");
  });
  EXPECT_EQ(Shown(), (Messages{{kBasicFirst, kOk, kWindow}}));
}

TEST_F(SetNavigation, TheFirstItemOpensWhateverTheCount) {
  visit.Open([&] {
    Script("delete from A01 where A00 = '" + kPerson + "'");
    visit.GoTo("A01");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    EXPECT_NE(visit.Window().personID, kPerson);
  });
  EXPECT_TRUE(Shown().empty());
}

// --- edits pending ---------------------------------------------------------------------------------

TEST_F(SetNavigation, WithoutEditsNothingIsAsked) {
  visit.Open([&] {
    for (const char* set : {"A02", "A03", "A12", "A12", "A01"}) visit.GoTo(set);
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(SetNavigation, NoThrowsTheEditsAwayAndGoesOn) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("改");
    Answer(toolkit::kAnswerNo);
    EXPECT_EQ(During([&] { visit.GoTo("A04"); }), kOpenA04);
    visit.GoTo("A12");
    EXPECT_NE(visit.Text("A12_A1201").Text(), "改");
  });
  EXPECT_EQ(Shown(), (Messages{{"数据被修改且未保存，是否保存？", kYesOrNo, "人员维护"}}));
}

TEST_F(SetNavigation, AClickOnTheSelectedItemAsksAndReloads) {
  visit.Open([&] {
    const std::string before = visit.Text("A01_A0109").Text();
    visit.Text("A01_A0109").SetText("园艺学");
    Answer(toolkit::kAnswerNo);
    visit.GoTo("A01");
    EXPECT_EQ(visit.Text("A01_A0109").Text(), before);
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Shown(), (Messages{{kSaveEdits, kYesOrNo, kWindow}}));
}

TEST_F(SetNavigation, YesSavesAndGoesOn) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("改");
    Answer(toolkit::kAnswerYes);
    EXPECT_EQ(During([&] { visit.GoTo("A04"); }),
              Join({{"delete from A12 where A00='" + kPerson + "' ",
                     "insert into A12( A00 ,A1201) values('" + kPerson + "','改')"},
                    kOpenA04}));
  });
  EXPECT_EQ(Value("select A1201 from A12 where A00='" + kPerson + "'"), "改");
}

TEST_F(SetNavigation, YesWithABadPageLeavesEverythingAsItWas) {
  visit.Open([&] {
    visit.Text("A01_A0101").SetText("");
    Answer(toolkit::kAnswerYes);
    const auto page = visit.Window().GetUserCtrl();
    EXPECT_TRUE(During([&] { visit.GoTo("A03"); }).empty());
    EXPECT_EQ(visit.Window().GetUserCtrl(), page);
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    EXPECT_EQ(visit.Window().CurItem, 1);
    EXPECT_EQ(visit.Window().PrevItem, 1);
    EXPECT_EQ(visit.Window().VMenu1().menuitemcur(), 1);
    EXPECT_EQ(visit.Window().VMenu1().Items()[2].icon, "");
  });
  EXPECT_EQ(Shown(), (Messages{{kSaveEdits, kYesOrNo, kWindow}, {"姓名 为必填项", kOk, "错误信息"}}));
}

TEST_F(SetNavigation, ASaveThatTheDatabaseRefusesKeepsThePage) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("改");
    Answer(toolkit::kAnswerYes);
    visit.failing->FailAt(2);
    visit.GoTo("A04");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA12");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Shown().back(), (Message{"磁盘或网络错误。", kOk, "信息保存"}));
}

TEST_F(SetNavigation, AClickIsDroppedWhenTheFieldBeingLeftRefuses) {
  visit.Open([&] {
    visit.Text("A01_A0109").SetFocus();
    bool refuse = true;
    const auto check = visit.Text("A01_A0109").Validate.Subscribe([&](bool& cancel) { cancel = refuse; });
    visit.Text("A01_A0109").SetText("园艺学");
    EXPECT_TRUE(During([&] { visit.GoTo("A03"); }).empty());
    EXPECT_EQ(visit.Focus(), "A01_A0109_v");
    EXPECT_EQ(visit.Window().CurItem, 1);
    EXPECT_TRUE(Shown().empty());
    refuse = false;
    Answer(toolkit::kAnswerNo);
    visit.GoTo("A03");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA03");
  });
}

TEST_F(SetNavigation, ASetWrittenInSmallLettersOpensItsPage) {
  Script("update s_infotable set tblname='a03' where tblname='A03'");
  visit.Open([&] {
    visit.GoTo("a03");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUsera03");
    EXPECT_EQ(visit.OnShow().WhInfo().TabId, "a03");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    EXPECT_EQ(visit.OnShow().FieldItems()->Item("A03_A0302")->Dmcpt, "");
    EXPECT_FALSE(visit.Text("A03_A0302").Text().empty());
  });
}

// --- failures --------------------------------------------------------------------------------------

TEST_F(SetNavigation, RequiredAnItemWithoutAPageClassSuchAsB02AndB03EndsTheVisit) {
  for (const std::int16_t type : {std::int16_t{2}, std::int16_t{3}, std::int16_t{0}, std::int16_t{9}}) {
    visit.component.PersonType = type;
    bool went_on = false;
    EXPECT_EQ(NumberOfFailure([&] {
                visit.Open([&] {
                  visit.statements.clear();
                  visit.user.ClickMenu(16);
                  EXPECT_EQ(visit.statements,
                            (Statements{"select count(A00) from a01 where a00 ='" + kPerson + "'"}));
                  EXPECT_EQ(visit.Window().GetUserCtrl(), nullptr) << "no half-built page stays behind";
                  // The window has ended: no further click reaches it.
                  visit.statements.clear();
                  visit.GoTo("A03");
                  went_on = !visit.statements.empty();
                });
              }),
              environment::kUnknownClass);
    EXPECT_FALSE(went_on);
    EXPECT_FALSE(visit.Window().InVisit());
  }
  visit.component.PersonType = 1;
  visit.Open([&] { visit.GoTo("B01"); });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(SetNavigation, AClickOnAMissingTableFailsTheVisit) {
  Script("drop table A12");
  EXPECT_EQ(NumberOfFailure([&] { visit.Open([&] { visit.GoTo("A12"); }); }), environment::kNoSuchTable);
  EXPECT_FALSE(visit.Window().InVisit());
}

TEST_F(SetNavigation, AFailureAtAnyStatementOfAClickReachesTheHost) {
  for (std::size_t k = 1; k <= kOpenA04.size(); ++k) {
    EXPECT_EQ(NumberOfFailure([&] {
                visit.Open([&] {
                  visit.failing->FailAt(k);
                  visit.GoTo("A04");
                });
              }),
              environment::kEngineFailure)
        << k;
    EXPECT_FALSE(visit.Window().InVisit()) << k;
  }
  EXPECT_TRUE(Shown().empty());
}

TEST_F(SetNavigation, RequiredASetWithoutARowInTheTableOfSetsFailsAfterItsPageWasBuilt) {
  visit.Open([] {});
  EXPECT_EQ(NumberOfFailure([&] {
              visit.Open([&] {
                Script("delete from s_infotable where tblname = 'A12'");
                visit.statements.clear();
                visit.GoTo("A12");
                EXPECT_EQ(visit.statements, kOpenA12);
              });
            }),
            environment::kNoCurrentRow);
}

}  // namespace
}  // namespace dossierkit::tests
