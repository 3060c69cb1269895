#include "platform/jet/statement.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/environment/failure.h"
#include "platform/jet/tokens.h"

namespace dossierkit::jet {
namespace {

using environment::Failure;

const TableColumns kA02{
    {"A00", ado::ColumnKind::kText, false},      {"A0201", ado::ColumnKind::kDate, false},
    {"A0202", ado::ColumnKind::kText, false},    {"A0205", ado::ColumnKind::kInteger, true},
    {"A0206", ado::ColumnKind::kBoolean, false}, {"A0207", ado::ColumnKind::kFloating, false},
    {"A0299", ado::ColumnKind::kInteger, false}};

const TableColumns* ColumnsOf(std::string_view table) { return table == "A02" ? &kA02 : nullptr; }

// The dialect's own ways, with Booleans as numbers.
const Renderer kNumbers{.true_constant = "1", .false_constant = "0"};

Statement Translated(std::string_view statement) { return Translate(statement, ColumnsOf, kNumbers); }
std::string Text(std::string_view statement) { return Translated(statement).text; }

Failure FailureOf(std::string_view statement) {
  try {
    const std::string text = Text(statement);
    ADD_FAILURE() << "no failure: " << statement << " gives " << text;
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.statement(), statement);
    return failure;
  }
  return Failure(0, "");
}

TEST(Statement, PlainStatementsPassUnchanged) {
  for (const char* statement :
       {"SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp", "delete from S_GUID",
        "update A02 set A0299 = A0299 +200 where a00='x'", "insert into S_GUID(val) values('a')",
        "select a.b as 姓    from (( A02  left join GB1 GB1_A0204 on A02.A0204=GB1_A0204.dmcod))",
        "select iif(max(A0299) is null,0,max(A0299))+1  from A02 where A00 ='it''s -- ; /* \"x\" [y]'"}) {
    EXPECT_EQ(Text(statement), statement);
  }
}

TEST(Statement, OuterBlanksAndOneSemicolonAreDropped) {
  EXPECT_EQ(Text(" delete from S_GUID "), " delete from S_GUID");
  EXPECT_EQ(Text("delete from S_GUID ; \r\n"), "delete from S_GUID");
}

TEST(Statement, FormatBecomesAPatternOfItsColumn) {
  const Statement statement = Translated(
      "select A02.A0299 as 序号, format(A02.A0201,'yyyy-mm') as 起始年月, format( len(A0202) , 'o''c' ) x "
      "from A02");
  EXPECT_EQ(statement.text, "select A02.A0299 as 序号, A02.A0201 as 起始年月, len(A0202) x from A02");
  ASSERT_EQ(statement.columns.size(), 3U);
  EXPECT_EQ(statement.columns[0].format, "");
  EXPECT_EQ(statement.columns[1].format, "yyyy-mm");
  EXPECT_EQ(statement.columns[2].format, "o'c");
}

TEST(Statement, WhatIsPutInKeepsApartFromWhatFollows) {
  EXPECT_EQ(Text("select format(A0201,'yyyy')from A02"), "select A0201 from A02");
  EXPECT_EQ(Text("select format(A0205-,'0')-1 from A02"), "select A0205- -1 from A02");
  EXPECT_EQ(Text("update A02 set A0205='5'where A0299=1"), "update A02 set A0205=5 where A0299=1");
}

TEST(Statement, FormatIsRefusedWhereItCannotBeTakenOut) {
  for (const char* statement :
       {"select a from t where format(a,'0')='1'", "select format(a) as x from t",
        "select format(a,b) as x from t", "select format(,'0') as x from t",
        "select iif(a,format(a,'0'),b) as x from t", "select *,format(a,'0') as x from t",
        "select t.*,format(a,'0') as x from t", "select format(format(a,'0'),'0') as x from t",
        "select format(a from t,'0') from t", "select format(*,'0') from t",
        "select format(len,'0')(a) as x from t", "update A02 set A0202=format(A0201,'0')"}) {
    EXPECT_EQ(FailureOf(statement).number(), environment::kSyntaxError);
  }
}

TEST(Statement, DefaultOfTrueOrFalseMakesABooleanColumn) {
  const Statement statement =
      Translated("select dmcod,iif(dmattr is null,false,dmattr) as dmattr,iif(a is null,0,a) from t");
  ASSERT_EQ(statement.columns.size(), 2U);
  EXPECT_EQ(statement.columns[0].kind, ado::ColumnKind::kUnknown);
  EXPECT_EQ(statement.columns[1].kind, ado::ColumnKind::kBoolean);
}

TEST(Statement, ADefaultThatOnlyBeginsWithTrueMakesNone) {
  const auto kinds = [](std::string_view text) { return Translated(text).columns.size(); };
  EXPECT_EQ(kinds("select iif(a,true,b) from t"), 1U);
  EXPECT_EQ(kinds("select iif(a,true or b,c) from t"), 0U);
  EXPECT_EQ(kinds("select iif(a,false=b,c) from t"), 0U);
  EXPECT_EQ(kinds("select iif(a,'true',c) from t"), 0U);
  EXPECT_EQ(kinds("select iif(a,[true],c) from t"), 0U);
}

TEST(Statement, StoredConstantsTakeTheKindOfTheirColumn) {
  EXPECT_EQ(
      Text("insert into A02(A00,A0201,A0202,a0205,A0206,A0207,A0299) "
           "values('P','1990年03月','12','12','True','1.50','7')"),
      "insert into A02(A00,A0201,A0202,a0205,A0206,A0207,A0299) values('P','1990-03-01','12',12,1,1.5,7)");
  EXPECT_EQ(Text("update A02 set A0201 = '1990年3月5日',A0202 = 'x' where A0202='1990年3月'"),
            "update A02 set A0201 = '1990-03-05',A0202 = 'x' where A0202='1990年3月'");
  EXPECT_EQ(Text("update A02 set A0206 = -1, A0205 = - 2.5, A0299 = 3"),
            "update A02 set A0206 = 1, A0205 = -2, A0299 = 3");
  EXPECT_EQ(Text("update A02 set A0201 = null, A0202 = '', A0206 = true"),
            "update A02 set A0201 = null, A0202 = '', A0206 = true");
}

TEST(Statement, ConstantsOfUnknownTablesAndColumnsAreLeftAlone) {
  EXPECT_EQ(Text("update A77 set A0201 = 'x'"), "update A77 set A0201 = 'x'");
  EXPECT_EQ(Text("insert into A02(A0277) values('x')"), "insert into A02(A0277) values('x')");
}

TEST(Statement, ConstantsThatDoNotFitAreRefused) {
  for (const char* assignment :
       {"A0201=''", "A0201='1990年月'", "A0201='1990年13月'", "A0201='____年__月'", "A0201=5",
        "A0205='12abc'", "A0205=''", "A0206='是'", "A0206=''", "A0207='1,5'"}) {
    const Failure failure = FailureOf("update A02 set " + std::string(assignment));
    EXPECT_EQ(failure.number(), environment::kDataMismatch) << assignment;
    EXPECT_EQ(failure.description(), "标准表达式中数据类型不匹配。");
  }
  EXPECT_EQ(FailureOf("update A02 set A0205='40000'").number(), environment::kOverflow);
  EXPECT_EQ(FailureOf("update A02 set A0299='3000000000'").number(), environment::kOverflow);
  EXPECT_EQ(Text("update A02 set A0299='40000'"), "update A02 set A0299=40000");
}

TEST(Statement, WhatIsNotOneStatementIsRefused) {
  for (const char* statement : {"",
                                "  ",
                                ";",
                                "select 'a from t",
                                "select a from t where b='it's'",
                                "select a from t -- x",
                                "select a /* x */ from t",
                                "select a from t; select b from t",
                                "delete from t;;",
                                "select \"a\" from t",
                                "select [a from t",
                                "select a] from t",
                                "select [] from t",
                                "select [ ] from t",
                                "select [a[b] from t",
                                "select [a\nb] from t",
                                "select [a]] from t",
                                "select `a` from t",
                                "select ? from t",
                                "select :a from t",
                                "select @a from t",
                                "select $a from t",
                                "select #1990-01-01# from t",
                                "select a from t where b=1x",
                                "select 0x10 from t",
                                "select 1e5 from t",
                                "select 1.2.3 from t",
                                "select a|b from t",
                                "select (a from t",
                                "select a) from t",
                                "select a from t)(",
                                "pragma journal_mode",
                                "drop table t",
                                "create table t(a)",
                                "with x as (select 1) select 1",
                                "explain select a from t",
                                "begin",
                                "commit",
                                "attach 'x' as y",
                                "'select'",
                                "vacuum"}) {
    const Failure failure = FailureOf(statement);
    EXPECT_EQ(failure.number(), environment::kSyntaxError) << statement;
    EXPECT_TRUE(failure.description().starts_with("SQL 语句语法错误：")) << failure.description();
  }
  FailureOf(std::string_view("select a\0 from t", 16));
  FailureOf(std::string_view("select 'a\0' from t", 18));
  FailureOf(std::string_view("select [a\0] from t", 18));
}

TEST(Statement, ANameInBracketsIsAName) {
  for (const char* statement :
       {"select [a] from t", "select a as [起始 年月] from [t u] order by [from] desc,[a-b]",
        "delete from [t]", "select [a;--'\"?].[b] from t", "select a from t order by [a]desc",
        "select [select] from [from]"}) {
    EXPECT_EQ(Text(statement), statement);
  }
}

TEST(Statement, ANameInBracketsIsTheColumnOfThatName) {
  EXPECT_EQ(Text("insert into [A02]([A00],[a0201],A0202) values(1,'1990年03月',[A00])"),
            "insert into [A02]([A00],[a0201],A0202) values('1','1990-03-01',[A00])");
  EXPECT_EQ(Text("update [A02] set [A0205]='1.2' , A0202=3 where [A0205]='x'"),
            "update [A02] set [A0205]=1 , A0202='3' where [A0205]='x'");
}

TEST(Statement, AWordInBracketsIsNoWordOfTheDialect) {
  for (const char* statement : {"[select] a from t", "select a [from] t", "insert [into] t(a) values(1)",
                                "update t [set] a=1", "delete [from] t", "select [len](a) from t",
                                "select a from t where [in](1)", "select [format](a,'0') from t"}) {
    EXPECT_EQ(FailureOf(statement).number(), environment::kSyntaxError) << statement;
  }
}

// Each constant as where it stands in the text, and its value.
std::string Constants(std::string_view text) {
  const Statement statement = Translated(text);
  std::string list;
  for (const Constant& constant : statement.constants) {
    const environment::Value value = statement.ValueOf(constant);
    const char* kind = value.As<bool>()                    ? "bool"
                       : value.As<std::int64_t>()          ? "int"
                       : value.As<double>()                ? "double"
                       : value.As<environment::DateTime>() ? "date"
                       : value.As<std::string>()           ? "text"
                                                           : "?";
    list += statement.text.substr(constant.position, constant.size) + " " + kind + " " +
            environment::TextOf(value) + "; ";
  }
  return list;
}

TEST(Statement, ConstantsOfAnUpdateHaveTheKindOfTheirColumn) {
  EXPECT_EQ(Constants("update A02 set A0201='1990年03月',A0202=5,A0205='2.5',A0206=-1,A0207='3',A0299 = - 7 "
                      "where A0202='it''s' and A0299>8 and A0207<.5"),
            "'1990-03-01' date 1990/3/1; '5' text 5; 2 int 2; 1 bool True; 3 double 3; -7 int -7; "
            "'it''s' text it's; 8 int 8; .5 double 0.5; ");
  EXPECT_EQ(Constants("update A02 set A0299=A0299 +200,A0206=true,A0201=null where a00='x'"),
            "200 int 200; 'x' text x; ");
  EXPECT_EQ(Constants("update A02 set A0201='1990-03-01 7:08:09'"),
            "'1990-03-01 07:08:09' date 1990/3/1 7:08:09; ");
}

TEST(Statement, AWholeNumberBeyond64BitsIsNoneOfThoseThatFit) {
  EXPECT_EQ(Constants("update A02 set A0207=9999999999999999999999 where A0299=9223372036854775807"),
            "10000000000000000000000 double 10000000000000000000000; "
            "9223372036854775807 int 9223372036854775807; ");
  EXPECT_EQ(Constants("update A02 set A0202='' where A0299=9223372036854775808"),
            "'' text ; 9223372036854775808 double 9223372036854779904; ");
}

TEST(Statement, EveryStatementNotesItsConstants) {
  EXPECT_EQ(Constants("insert into A02(A0205,A0206,A0202) values('5',0,('x'))"),
            "5 int 5; 0 bool False; 'x' text x; ");
  EXPECT_EQ(Constants("select format(A0205,'0'),iif(A0202 is null,'-',A0202) from A02 where A0202='x'"),
            "'-' text -; 'x' text x; ");
  EXPECT_EQ(Constants("delete from A02 where A0202='x' and A0299=2"), "'x' text x; 2 int 2; ");
}

TEST(Statement, WithParametersItIsTheSameForOtherConstants) {
  const auto shape = [](std::string_view text) { return Translated(text).WithParameters(); };
  EXPECT_EQ(shape("update A02 set A0201='1990年03月', A0299 = - 7 where A0202='it''s' and A0299>8"),
            "update A02 set A0201=?, A0299 = ? where A0202=? and A0299>?");
  EXPECT_EQ(shape("update A02 set A0299=A0299 +200"), "update A02 set A0299=A0299 +?");
  EXPECT_EQ(shape("select 'it''s',2.5 as [3] from A02 where A0202 like 'a%'"),
            "select ?,? as [3] from A02 where A0202 like ?");
  EXPECT_EQ(shape("delete from A02"), "delete from A02");
}

TEST(Statement, FloatingConstantsKeepAllTheirDigits) {
  EXPECT_EQ(Text("update A02 set A0207='0.12345678901234567'"), "update A02 set A0207=0.12345678901234566");
  EXPECT_EQ(Text("update A02 set A0207='-0'"), "update A02 set A0207=0");
  EXPECT_EQ(Text("update A02 set A0207='-1234567890123456789'"), "update A02 set A0207=-1234567890123456768");
}

TEST(Statement, WordsOfTheDialectMayStandBeforeAParenthesis) {
  for (const char* statement :
       {"select a from (t) where (a=1) and (b=2) or (c=3) and not (d=4) and a in (1,2)",
        "select min(a),max(a),sum(a),avg(a),count(*),len(a),iif(a,1,2) from t",
        "select a from (t) left join (u) on (t.a=u.a) order by (a)", "select (a) from t where a like (b)",
        "select a from t where a in (select (b) from u)"}) {
    EXPECT_EQ(Text(statement), statement);
  }
  EXPECT_EQ(Text("insert into A02(A0205) values(('5'))"), "insert into A02(A0205) values(('5'))");
}

TEST(Statement, OtherShapesAreRefused) {
  for (const char* statement : {"select",
                                "select from t",
                                "select a",
                                "select a,",
                                "select a, from t",
                                "select a from",
                                "insert into t values(1)",
                                "insert into t(a) select b from u",
                                "insert into t(a,b) values(1)",
                                "insert into t(a) values(1,2)",
                                "insert into t(a) values(1),(2)",
                                "insert or replace into t(a) values(1)",
                                "insert into t() values()",
                                "insert into t(a) values()",
                                "insert into t(a,) values(1)",
                                "insert into t(a) values(1) returning a",
                                "update or ignore t set a=1",
                                "update t set",
                                "update t set a",
                                "update t set a=",
                                "update t set a=,b=1",
                                "update t set a=1,",
                                "update t set a=1, where b=2",
                                "delete t",
                                "delete from t a",
                                "delete from",
                                "delete * from t"}) {
    EXPECT_EQ(FailureOf(statement).number(), environment::kSyntaxError) << statement;
  }
}

TEST(Statement, UnknownFunctionsAreRefused) {
  const Failure failure = FailureOf("select a from t where randomblob(5)=a");
  EXPECT_EQ(failure.number(), environment::kSyntaxError);
  EXPECT_EQ(failure.description(), "表达式中 'randomblob' 函数未定义。");
  FailureOf("select load_extension('x') from t");
  FailureOf("select a from pragma_table_info('t')");
  FailureOf("update A02 set A0202=upper(A0202)");
  FailureOf("insert into A02(A0202) values(char(65))");
  FailureOf("delete from A02 where upper(A0202)='X'");
}

TEST(Tokens, LiteralsKeepTheirText) {
  EXPECT_EQ(TextOfLiteral("'it''s'"), "it's");
  EXPECT_EQ(TextOfLiteral("''"), "");
  EXPECT_EQ(LiteralOf("it's"), "'it''s'");
  for (const char* text : {"", "'", "''", "a'b''c", "年"}) EXPECT_EQ(TextOfLiteral(LiteralOf(text)), text);
}

TEST(Tokens, CutWordsNumbersLiteralsAndOperators) {
  const auto tokens = Tokenize("a.起始年月<>'x''y'>=.5");
  std::string cut;
  for (const Token& token : tokens) cut += std::string(token.text) + " ";
  EXPECT_EQ(cut, "a . 起始年月 <> 'x''y' >= .5 ");
}

TEST(Statement, AnyTextGivesOneStatementWithItsLiteralsOrASyntaxError) {
  const std::string pieces[] = {"select ", "a ",      "from ", "t ",      "'x''y' ", "' ",    "( ",
                                ") ",      ", ",      "; ",    "-- ",     "insert ", "into ", "values",
                                "=",       "update ", "set ",  "format(", "1 ",      "where "};
  unsigned state = 3;
  const auto random = [&](unsigned limit) {
    return (state = state * 1664525U + 1013904223U, (state >> 16) % limit);
  };
  int accepted = 0;
  for (int round = 0; round < 200000; ++round) {
    std::string text = pieces[random(2) == 0 ? 0 : random(20)];
    for (unsigned i = random(8); i > 0; --i) text += pieces[random(20)];
    try {
      const std::string result = Text(text);
      ++accepted;
      ASSERT_EQ(Text(result), result) << text;
      ASSERT_EQ(result.find(';') == std::string::npos || result.find('\'') != std::string::npos, true)
          << text;
    } catch (const Failure& failure) {
      ASSERT_EQ(failure.number(), environment::kSyntaxError) << text;
    }
  }
  EXPECT_GT(accepted, 100);
}

}  // namespace
}  // namespace dossierkit::jet
