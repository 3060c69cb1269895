// A typed text resolved to one code, or not.
#include "codes/lookup_code.h"

#include <new>

#include "tests/codes/codes_test.h"

namespace dossierkit::tests {
namespace {

class LookupCodeTest : public CodesTest {
 protected:
  LookupCodeTest() {
    item.CodeTable = "T";
    item.Dmcod = "旧码";
    item.Dmcpt = "旧名";
  }
  void Table(const std::string& rows) { MakeTable("T", rows); }
  std::string Item() const { return environment::TextOf(item.Dmcod) + "|" + item.Dmcpt; }
  // The result, and what the item holds then.
  std::string Look(const std::string& text) {
    const std::string result = LookupCode(item, text);
    return result + " -> " + Item();
  }
  std::string EngineSays(const std::string& statement) {
    try {
      visit.database->Run(statement);
    } catch (const std::exception& failure) {
      return failure.what();
    }
    return "no failure";
  }

  cFieldItem item;
};

const std::string kNothing = " -> 旧码|旧名";

// --- the exact match -----------------------------------------------------------------------------

TEST_F(LookupCodeTest, AnExactShorthandIsResolvedByOneStatementWithoutAWindow) {
  Table("('10','北京','bj',1),('20','天津','tj',1)");
  EXPECT_EQ(
      During([&] { EXPECT_EQ(Look("bj"), "北京 -> 10|北京"); }),
      (Statements{"select * from T where dmattr =true and  (dmcod='bj' or dmcpt ='bj' or dmhnd='bj')"}));
  EXPECT_TRUE(Shown().empty());
}

TEST_F(LookupCodeTest, AnExactCodeIsResolved) {
  Table("('10','北京','bj',1),('20','天津','tj',1)");
  EXPECT_EQ(
      During([&] { EXPECT_EQ(Look("20"), "天津 -> 20|天津"); }),
      (Statements{"select * from T where dmattr =true and  (dmcod='20' or dmcpt ='20' or dmhnd='20')"}));
}

TEST_F(LookupCodeTest, AnExactCaptionIsResolvedThoughOthersHoldIt) {
  Table("('10','北京','bj',1),('11','北京市','bjs',1),('12','大北京','dbj',1)");
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("北京"), "北京 -> 10|北京"); }),
            (Statements{
                "select * from T where dmattr =true and  (dmcod='北京' or dmcpt ='北京' or dmhnd='北京')"}));
}

TEST_F(LookupCodeTest, CapitalsAreNoDifference) {
  Table("('a1','SCI论文','scilw',1),('b1','其他','qt',1)");
  EXPECT_EQ(Look("SCILW"), "SCI论文 -> a1|SCI论文");
  EXPECT_EQ(Look("sci论文"), "SCI论文 -> a1|SCI论文");
  EXPECT_EQ(Look("B1"), "其他 -> b1|其他");
  EXPECT_EQ(Look("CIL"), "SCI论文 -> a1|SCI论文");
}

TEST_F(LookupCodeTest, TheSampleTableIsResolvedToo) {
  item.CodeTable = "GB3304";
  EXPECT_EQ(Look("01"), "汉族 -> 01|汉族");
}

// --- the like match ------------------------------------------------------------------------------

TEST_F(LookupCodeTest, WithoutAnExactRowTheCharactersAreSearchedInTheirOrder) {
  Table("('10','北京市','beijingshi',1),('20','天津市','tianjinshi',1)");
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("bj"), "北京市 -> 10|北京市"); }),
            (Statements{
                "select * from T where dmattr =true and  (dmcod='bj' or dmcpt ='bj' or dmhnd='bj')",
                "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from T where  dmattr =true and   "
                "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%b%j%' or   DmHnd like '%b%j%')     order by "
                "dmcod"}));
  EXPECT_EQ(Look("jb"), " -> 10|北京市");
}

TEST_F(LookupCodeTest, APatternTakesWholeCharactersOfTheCaption) {
  Table("('10','中国人民大学','x',1),('20','中山大学','y',1)");
  const auto statements = During([&] { EXPECT_EQ(Look("人大"), "中国人民大学 -> 10|中国人民大学"); });
  ASSERT_EQ(statements.size(), 2U);
  EXPECT_EQ(statements[1],
            "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from T where  dmattr =true and   "
            "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '%人%大%' or   DmHnd like '%人%大%')     order by "
            "dmcod");
}

TEST_F(LookupCodeTest, RequiredAPercentSignStaysAWildcard) {
  Table("('10','百分之五','bfzw',1)");
  EXPECT_EQ(Look("%"), "百分之五 -> 10|百分之五");
  EXPECT_EQ(Look("b%w"), "百分之五 -> 10|百分之五");
  Script("insert into T values('20','其他','qt',1)");
  item.Dmcod = "旧码";
  item.Dmcpt = "旧名";
  EXPECT_EQ(Look("%"), kNothing);
}

TEST_F(LookupCodeTest, RequiredAnUnderscoreStaysAWildcardForOneCharacter) {
  Table("('10','abc','',1),('20','de','',1)");
  EXPECT_EQ(Look("___"), "abc -> 10|abc");
  EXPECT_EQ(Look("d_"), "de -> 20|de");
  item.Dmcod = "旧码";
  item.Dmcpt = "旧名";
  EXPECT_EQ(Look("__"), kNothing);
  EXPECT_EQ(Look("____"), kNothing);
}

TEST_F(LookupCodeTest, SeveralRowsAreNoMatch) {
  Table("('10','北京','bj',1),('20','宝鸡','bji',1)");
  EXPECT_EQ(Look("b"), kNothing);
}

TEST_F(LookupCodeTest, NoRowIsNoMatchAndNothingIsSaid) {
  Table("('10','北京','bj',1)");
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("zz"), kNothing); }).size(), 2U);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(LookupCodeTest, ACodePrefixIsNotMatched) {
  Table("('320481','溧阳市','lys',1)");
  EXPECT_EQ(Look("3204"), kNothing);
  EXPECT_EQ(Look("320481"), "溧阳市 -> 320481|溧阳市");
}

TEST_F(LookupCodeTest, ARowWithoutAShorthandIsFoundByItsCaption) {
  Table("('10','北京市',null,1),('20','天津','',1)");
  EXPECT_EQ(Look("北市"), "北京市 -> 10|北京市");
}

// --- rows that do not count ----------------------------------------------------------------------

TEST_F(LookupCodeTest, ARowThatMayNotBeChosenIsNoMatch) {
  Table("('10','北京','bj',0),('20','天津','tj',null)");
  for (const char* text : {"10", "北京", "bj", "b", "20", "天津", "tj", "t"}) {
    EXPECT_EQ(Look(text), kNothing) << text;
  }
}

TEST_F(LookupCodeTest, ARowThatMayNotBeChosenDoesNotDisturbOneThatMay) {
  Table("('10','北京','bj',0),('11','北京','bj',null),('20','宝鸡','bj',1)");
  EXPECT_EQ(Look("bj"), "宝鸡 -> 20|宝鸡");
  EXPECT_EQ(Look("b"), "宝鸡 -> 20|宝鸡");
}

TEST_F(LookupCodeTest, TwoExactRowsFallToTheLikeMatchAndAreNotResolved) {
  Table("('10','男','nx',1),('20','女','nx',1)");
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("nx"), kNothing); }).size(), 2U);
}

TEST_F(LookupCodeTest, OneRowsCodeThatIsAnothersShorthandFallsToTheLikeMatch) {
  Table("('a','甲','x',1),('b','乙','a',1)");
  EXPECT_EQ(Look("a"), "乙 -> b|乙");
}

TEST_F(LookupCodeTest, RequiredOfTwoExactRowsTheOneThatTheLikeMatchTakesWins) {
  Table("('10','男','nx',1),('20','','nx',1)");
  EXPECT_EQ(Look("nx"), "男 -> 10|男");
  Script("delete from T; insert into T values('','男','nx',1),('20','女','nx',1)");
  EXPECT_EQ(Look("nx"), "女 -> 20|女");
}

// --- half a row ----------------------------------------------------------------------------------

TEST_F(LookupCodeTest, RequiredAnExactRowWithoutACodeGivesItsCaptionAndLeavesTheItem) {
  Table("('','北京','bj',1)");
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("bj"), "北京 -> 旧码|旧名"); }).size(), 2U);
  Script("update T set dmcod=null");
  EXPECT_EQ(Look("bj"), "北京 -> 旧码|旧名");
}

TEST_F(LookupCodeTest, AnExactRowWithoutACodeGivesWayToTheOneLikeRow) {
  Table("('','北京','bj',1),('20','宝鸡','bji',1)");
  EXPECT_EQ(Look("bj"), "宝鸡 -> 20|宝鸡");
}

TEST_F(LookupCodeTest, AnExactRowWithoutACaptionIsNoMatch) {
  Table("('10','','bj',1)");
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("10"), kNothing); }).size(), 2U);
  Script("update T set dmcpt=null");
  EXPECT_EQ(Look("bj"), kNothing);
}

// --- nothing, and failures -----------------------------------------------------------------------

TEST_F(LookupCodeTest, AnEmptyTextReadsNothing) {
  Table("('10','北京','bj',1)");
  EXPECT_TRUE(During([&] { EXPECT_EQ(Look(""), kNothing); }).empty());
  item.CodeTable = "NOSUCH";
  EXPECT_EQ(Look(""), kNothing);
  EXPECT_TRUE(Shown().empty());
}

TEST_F(LookupCodeTest, AnApostropheIsShownAsTheEnginesFailure) {
  Table("('10','北京','bj',1)");
  const std::string exact =
      "select * from T where dmattr =true and  (dmcod='b'j' or dmcpt ='b'j' or dmhnd='b'j')";
  EXPECT_EQ(During([&] { EXPECT_EQ(Look("b'j"), kNothing); }), (Statements{exact}));
  EXPECT_NE(EngineSays(exact), "no failure");
  EXPECT_EQ(Shown(), (Messages{{EngineSays(exact), 48, "信息校对"}}));
}

TEST_F(LookupCodeTest, AMissingTableIsShown) {
  EXPECT_EQ(Look("bj"), kNothing);
  EXPECT_EQ(Shown(),
            (Messages{{EngineSays("select * from T where dmattr =true and  (dmcod='bj' or dmcpt ='bj' or "
                                  "dmhnd='bj')"),
                       48, "信息校对"}}));
}

TEST_F(LookupCodeTest, AFailureOfTheSecondStatementDropsTheCaptionOfTheFirst) {
  Table("('','北京','bj',1)");
  visit.failing->FailAt(2);
  EXPECT_EQ(Look("bj"), kNothing);
  EXPECT_EQ(Shown(), (Messages{{"磁盘或网络错误。", 48, "信息校对"}}));
}

TEST_F(LookupCodeTest, NothingIsKeptBetweenTwoCalls) {
  Table("('','北京','bj',1),('20','天津','tj',1)");
  EXPECT_EQ(Look("bj"), "北京 -> 旧码|旧名");
  EXPECT_EQ(Look("zz"), kNothing);
  EXPECT_EQ(Look("tj"), "天津 -> 20|天津");
  Script("update T set dmhnd='xx' where dmcod='20'");
  EXPECT_EQ(Look("tj"), " -> 20|天津");
}

TEST_F(LookupCodeTest, HoweverManyExactRowsThereAreButOneIsNone) {
  Table("('10','甲','nx',1),('20','乙','nx',1)");
  for (const char* row : {"('30','丙','nx',1)", "('40','丁','nx',1)", "('50','戊','nx',1)"}) {
    Script(std::string("insert into T values") + row);
    EXPECT_EQ(Look("nx"), kNothing) << row;
  }
}

TEST_F(LookupCodeTest, ABlankIsACharacterOfThePattern) {
  Table("('10','南 京','',1),('20','南京','',1)");
  const auto statements = During([&] { EXPECT_EQ(Look(" "), "南 京 -> 10|南 京"); });
  ASSERT_EQ(statements.size(), 2U);
  EXPECT_EQ(statements[1],
            "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from T where  dmattr =true and   "
            "dmcod<>''  and dmcpt<>''   and  ( DmCpt like '% %' or   DmHnd like '% %')     order by dmcod");
}

TEST_F(LookupCodeTest, AFailureThatIsNoneOfTheEnvironmentsIsShownToo) {
  Table("('10','北京','bj',1)");
  visit.RunOutOfMemoryAt("select * from T");
  EXPECT_EQ(Look("bj"), kNothing);
  EXPECT_EQ(Shown(), (Messages{{std::bad_alloc().what(), 48, "信息校对"}}));
}

}  // namespace
}  // namespace dossierkit::tests
