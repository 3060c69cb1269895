// The dialect on every engine; a part of conformance.h.
#pragma once

#include "tests/adapters/conformance_fixture.h"

namespace dossierkit::conformance {

TEST_F(Conformance, NullsComeFirstInAnOrder) {
  Run("insert into A02(A00,A0202,A0299) values('b','x',1)");
  Run("insert into A02(A00,A0299) values('a',1)");
  EXPECT_EQ(List("select A00 from A02 order by A0202"), "a,b");
  EXPECT_EQ(List("select A00 from A02 order by A0202 desc"), "b,a");
}

TEST_F(Conformance, UnequalLeavesOutNullAndTheSameInOtherCase) {
  Run("insert into A02(A00,A0202,A0299) values('1','ab',1)");
  Run("insert into A02(A00,A0202,A0299) values('2','',1)");
  Run("insert into A02(A00,A0299) values('3',1)");
  EXPECT_EQ(List("select A00 from A02 where A0202<>''"), "1");
  EXPECT_EQ(List("select A00 from A02 where A0202<>'AB'"), "2");
}

TEST_F(Conformance, EveryNumberButZeroIsStoredAsTrue) {
  Run("insert into GB1(dmcod,dmattr) values('1','-1')");
  Run("insert into GB1(dmcod,dmattr) values('2',2)");
  Run("insert into GB1(dmcod,dmattr) values('3','0')");
  EXPECT_EQ(List("select dmcod from GB1 where dmattr =true order by dmcod"), "1,2");
}

TEST_F(Conformance, FalseFindsRowsThatAreNotTrue) {
  AddCodes();
  EXPECT_EQ(List("select dmcod from GB1 where dmattr =false"), "1");
}

TEST_F(Conformance, QuotedDateGoesIntoADateColumn) {
  Run("insert into A01(A00,A0104) values('P','1990年03月05日')");
  EXPECT_EQ(One("select A0104 from A01"), Value(DateTime{1990, 3, 5}));
  EXPECT_EQ(One("select format(A0104,'yyyy年mm月dd日') as 出生日期 from A01"), Value("1990年03月05日"));
}

TEST_F(Conformance, DatesSortByTime) {
  Run("insert into A02(A00,A0201,A0299) values('2','1990年10月',1)");
  Run("insert into A02(A00,A0201,A0299) values('1','1990年9月',1)");
  EXPECT_EQ(List("select A00 from A02 order by A0201"), "1,2");
}

TEST_F(Conformance, ValuesThatDoNotFitTheirColumnAreRefusedAndNothingIsStored) {
  for (const char* assignment :
       {"A0201='1990年13月'", "A0201=''", "A0205='12abc'", "A0205=''", "A0206='是'"}) {
    Run("insert into A02(A00,A0299) values('P',1)");
    EXPECT_EQ(FailureOf("update A02 set A0202='x'," + std::string(assignment)).number(),
              environment::kDataMismatch);
    EXPECT_EQ(One("select count(*) from A02 where A0202='x'"), Value(0));
    Run("delete from A02");
  }
}

TEST_F(Conformance, NumbersAreRoundedHalfToEvenAndKeptWithin16Bits) {
  Run("insert into A02(A00,A0205,A0207,A0299) values('P','12.5','0.25',1)");
  EXPECT_EQ(One("select A0205 from A02"), Value(12));
  EXPECT_EQ(One("select A0207 from A02"), Value(0.25));
  EXPECT_EQ(FailureOf("update A02 set A0205='32768'").number(), environment::kOverflow);
}

TEST_F(Conformance, WhatAnUpdateStoresIsWhatAnInsertStores) {
  const struct {
    const char* column;
    const char* constant;
    Value stored;
  } kCases[] = {
      {"A0207", "'9999999999999999999999'", Value(1e22)},
      {"A0207", "9999999999999999999999", Value(1e22)},
      {"A0207", "'-9999999999999999999999'", Value(-1e22)},
      {"A0207", "'9007199254740993'", Value(9007199254740992.0)},
      {"A0207", "'0.1'", Value(0.1)},
      {"A0207", "-0.5", Value(-0.5)},
      {"A0207", "'7'", Value(7.0)},
      {"A0207", "'0.12345678901234567'", Value(0.12345678901234567)},
      {"A0205", "'-32768'", Value(-32768)},
      {"A0205", "-3", Value(-3)},
      {"A0205", "'2.5'", Value(2)},
      {"A0299", "'-2147483648'", Value(std::int64_t{-2147483647} - 1)},
      {"A0299", "- 4", Value(-4)},
      {"A0206", "'True'", Value(true)},
      {"A0206", "'-1'", Value(true)},
      {"A0206", "'0'", Value(false)},
      {"A0206", "false", Value(false)},
      {"A0206", "'0.5'", Value(true)},
      {"A0201", "'1990年03月'", Value(DateTime{1990, 3, 1})},
      {"A0201", "'1990-03-05 7:08:09'", Value(DateTime{1990, 3, 5, 7, 8, 9})},
      {"A0201", "'1990-03-05 0:00:01'", Value(DateTime{1990, 3, 5, 0, 0, 1})},
      {"A0201", "'1990-03-05 23:59'", Value(DateTime{1990, 3, 5, 23, 59, 0})},
      {"A0201", "null", Value(Null{})},
      {"A0202", "'-0012.50'", Value("-0012.50")},
      {"A0202", "12", Value("12")},
      {"A0202", "'it''s'", Value("it's")},
  };
  for (const auto& one : kCases) {
    const std::string column = one.column;
    const std::string constant = one.constant;
    Run("delete from A02");
    Run("insert into A02(A00," + column + ") values('i'," + constant + ")");
    EXPECT_EQ(One("select " + column + " from A02"), one.stored) << column << " inserted " << constant;
    Run("update A02 set " + column + " = null");
    Run("update A02 set " + column + " = " + constant);
    EXPECT_EQ(One("select " + column + " from A02"), one.stored) << column << " updated " << constant;
    Run("update A02 set A00='j'," + column + "=" + constant + " where A00='i'");
    EXPECT_EQ(One("select " + column + " from A02 where A00='j'"), one.stored) << column << " beside another";
  }
}

TEST_F(Conformance, ABooleanIsFoundByItsWordHoweverItWasStored) {
  Run("insert into A02(A00,A0206) values('P','True')");
  EXPECT_EQ(One("select count(*) from A02 where A0206=true"), Value(1));
  Run("update A02 set A0206='0'");
  EXPECT_EQ(One("select count(*) from A02 where A0206=false"), Value(1));
  Run("update A02 set A0206='-1'");
  EXPECT_EQ(One("select count(*) from A02 where A0206=true"), Value(1));
}

TEST_F(Conformance, AnUpdateComparesNumbersWhole) {
  Run("insert into A02(A00,A0207,A0299) values('P','1.5','5')");
  Run("update A02 set A0202='x' where A0299=99999999999999999999");
  Run("update A02 set A0202='y' where A0207=1.5 and A0299<99999999999999999999");
  EXPECT_EQ(One("select A0202 from A02"), Value("y"));
  Run("update A02 set A0202='z' where A0207>1.4 and A0299>4.9 and A0299=5");
  EXPECT_EQ(One("select A0202 from A02"), Value("z"));
}

TEST_F(Conformance, ATimeOfDayIsFormattedAndOrdered) {
  Run("insert into A02(A00,A0201) values('2','1990-03-05 17:08')");
  Run("insert into A02(A00,A0201) values('1','1990-03-05 7:08')");
  Run("insert into A02(A00,A0201) values('0','1990-03-05')");
  EXPECT_EQ(List("select A00 from A02 order by A0201"), "0,1,2");
  EXPECT_EQ(One("select format(A0201,'yyyy-mm-dd hh:nn') as x from A02 where A00='1'"),
            Value("1990-03-05 07:08"));
}

TEST_F(Conformance, ABooleanColumnWithAFormatIsStillBoolean) {
  Run("insert into A02(A00,A0206) values('P','1')");
  EXPECT_EQ(One("select format(A0206,'0') as x from A02"), Value("True"));
}

TEST_F(Conformance, NamesMayStandInBrackets) {
  Run("insert into [A02]([A00],[A0201],A0202) values('P','1990年03月','b')");
  Run("insert into A02(A00,[a0201],A0202) values('P','1989年03月','a')");
  EXPECT_EQ(List("select * from A02 where A00 ='P' order by [A0202] desc"), "P,P");
  EXPECT_EQ(List("select A0202 from A02 where A00 ='P' order by [A0202] desc"), "b,a");
  EXPECT_EQ(List("select A0202 from A02 where A00 ='P' order by [A0201],[A0299]"), "a,b");
  Run("update [A02] set [A0202]='c' where [A0201]='1990-03-01'");
  const auto rows = connection_->Execute("select [A02].[A0202] as [起始 年月] from [A02] where A0202='c'");
  ASSERT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(rows->FieldName(0), "起始 年月");
  EXPECT_EQ(rows->Fields("起始 年月"), Value("c"));
  EXPECT_EQ(FailureOf("select * from A02 order by [没有 的]").number(), environment::kUnknownName);
  EXPECT_EQ(FailureOf("insert into [it's](a) values(1)").number(), environment::kNoSuchTable);
  EXPECT_EQ(FailureOf("update [it's] set a=1").number(), environment::kNoSuchTable);
}

TEST_F(Conformance, LiteralsPassUnchanged) {
  for (const std::string text :
       {"a''b", "; delete from A02 --", "/*", "\"x\" [y] `z`", "?1 :a @b $c", "100%_", "换\r\n行"}) {
    Run("insert into A02(A00,A0202,A0299) values('P','" + text + "',1)");
    EXPECT_EQ(One("select A0202 from A02 where A0202='" + text + "'"),
              Value(text == "a''b" ? std::string("a'b") : text));
    Run("delete from A02 where A00='P'");
  }
}

TEST_F(Conformance, TwoStatementsNeverRun) {
  Run("insert into A02(A00,A0299) values('P',1)");
  EXPECT_EQ(FailureOf("select * from A02; delete from A02").number(), environment::kSyntaxError);
  EXPECT_EQ(FailureOf("delete from A02 where A00='x'; delete from A02").number(), environment::kSyntaxError);
  EXPECT_EQ(One("select count(*) from A02"), Value(1));
  Run("delete from A02;");
  EXPECT_EQ(One("select count(*) from A02"), Value(0));
}

TEST_F(Conformance, UnknownNamesAreTold) {
  environment::Failure failure = FailureOf("select * from A77");
  EXPECT_EQ(failure.number(), environment::kNoSuchTable);
  EXPECT_NE(failure.description().find("找不到输入表或查询“A77”"), std::string::npos);
  failure = FailureOf("select max(A0199)+1 from A01 where personid = 'P'");
  EXPECT_EQ(failure.number(), environment::kUnknownName);
  EXPECT_NE(failure.description().find("至少一个参数没有被指定值"), std::string::npos);
  EXPECT_EQ(FailureOf("insert into A01(A00,A0177) values('P','x')").number(), environment::kUnknownName);
  EXPECT_EQ(FailureOf("update A01 set A0177='x'").number(), environment::kUnknownName);
  EXPECT_EQ(FailureOf("delete from A77").number(), environment::kNoSuchTable);
  EXPECT_EQ(FailureOf("insert into A77(A00) values('P')").number(), environment::kNoSuchTable);
}

TEST_F(Conformance, ApostropheOfTheUserIsASyntaxError) {
  for (const char* statement :
       {"select dmcpt from GB1 where dmcod='O'Neil'", "update A01 set A0101='it's' where A00='P'",
        "insert into A01(A00,A0101) values('P',''')"}) {
    const environment::Failure failure = FailureOf(statement);
    EXPECT_EQ(failure.number(), environment::kSyntaxError);
    EXPECT_TRUE(failure.description().starts_with("SQL 语句语法错误：")) << failure.description();
  }
}

TEST_F(Conformance, WritingGivesAClosedRecordset) {
  EXPECT_EQ(connection_->Execute("delete from A02")->State(), ado::kStateClosed);
  EXPECT_EQ(connection_->Execute("select * from A02")->State(), ado::kStateOpen);
}

}  // namespace dossierkit::conformance
