// Every statement of the catalogue as a strict engine takes it. The texts were run on a server.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/jet/statement.h"
#include "tests/platform/jet/strict_renderer.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;

TableColumn Text(const char* name) { return {name, ColumnKind::kText, false}; }
TableColumn Number(const char* name) { return {name, ColumnKind::kInteger, false}; }
TableColumn Boolean(const char* name) { return {name, ColumnKind::kBoolean, false}; }
TableColumn Date(const char* name) { return {name, ColumnKind::kDate, false}; }

const std::map<std::string, TableColumns> kTables = {
    {"s_infotable",
     {Text("tblname"), Text("tbldesc"), Number("OtherProp"), Text("orderfield"), Number("maxnumber"),
      Boolean("Property")}},
    {"s_infoitem",
     {Text("tblname"), Text("itemname"), Text("itemdesc"), Text("FieldType"), Text("FieldLength"),
      Text("CodeTable"), Text("style"), Text("Check"), Text("FldOrder"), Number("FldWidth"),
      Text("FldExplain"), Boolean("IsNUll")}},
    {"s_codetabledefine", {Text("dmgrp"), Text("codtbldsc")}},
    {"s_codelevdefine", {Text("dmgrp"), Number("levelnum"), Number("bit")}},
    {"s_guid", {Text("id"), Text("val")}},
    {"gb1", {Text("dmcod"), Text("dmcpt"), Text("dmhnd"), Boolean("dmattr")}},
    {"gb2", {Text("dmcod"), Text("dmcpt"), Text("dmhnd"), Boolean("dmattr")}},
    {"a01", {Text("A00"), Text("A0101"), Date("A0104"), Number("A0136"), Number("A0199")}},
    {"a02",
     {Text("A00"),
      Date("A0201"),
      Date("A0201A"),
      Text("A0202"),
      Text("A0203"),
      Text("A0204"),
      {"A0205", ColumnKind::kInteger, true},
      Boolean("A0206"),
      {"A0207", ColumnKind::kFloating, false},
      Number("A0299")}}};

const TableColumns* ColumnsOf(std::string_view table) {
  const auto found = kTables.find(environment::LowerCase(table));
  return found == kTables.end() ? nullptr : &found->second;
}

Statement Rendered(std::string_view statement) { return Translate(statement, ColumnsOf, kStrictRenderer); }
std::string Strict(std::string_view statement) { return Rendered(statement).text; }

std::string Refused(std::string_view statement) {
  try {
    return "no failure: " + Strict(statement);
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.statement(), statement);
    return std::to_string(failure.number()) + " " + failure.description();
  }
}

struct Form {
  const char* statement;
  const char* rendered;
};

const Form kCatalogue[] = {
    {"SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp",
     "SELECT * FROM s_infotable where tblname ilike 'a%' escape '' order by OtherProp nulls first"},
    {"select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A02'",
     "select case when tbldesc is null then '' else tbldesc end  from s_infotable where lower(tblname) "
     "=lower('A02')"},
    {"select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname ='A02'  "
     "and orderfield<>'' ",
     "select case when orderfield is null  then  '' else orderfield end as orderfield  from s_infotable "
     "where lower(tblname) =lower('A02')  and orderfield<>''"},
    {"select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='A02'",
     "select case when maxnumber is null then 0 else maxnumber end as maxnumber from  s_infotable  where "
     "lower(tblname) =lower('A02')"},
    {"select count(*) from A02 where a00='P'", "select count(*) from A02 where lower(a00)=lower('P')"},
    {" select Property from s_infotable  where TblName ='A02'",
     " select Property from s_infotable  where lower(TblName) =lower('A02')"},
    {" select * from s_infoitem  where tblname ='A02'",
     " select * from s_infoitem  where lower(tblname) =lower('A02')"},
    {"select * from A01 where a00 ='P'", "select * from A01 where lower(a00) =lower('P')"},
    {"select * from A02 where a00 ='P' and A0299=2",
     "select * from A02 where lower(a00) =lower('P') and A0299=2"},
    {"select dmcpt from GB1 where dmcod='101'", "select dmcpt from GB1 where lower(dmcod)=lower('101')"},
    {"select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A02' and itemname = 'A0299' ",
     "select itemdesc from s_infoitem where itemdesc <>'' and  lower(tblname) = lower('A02') and "
     "lower(itemname) = lower('A0299')"},
    {"select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,iif(style is null,'',style) "
     "as style ,iif(fldwidth is null,2000,fldwidth) as fldwidth from  s_infoitem where tblname ='A02' and "
     "itemname <> 'A00' and itemname <>'' and itemdesc <>''   order by fldorder ",
     "select itemname,itemdesc,case when codetable is null then '' else codetable end as codetable ,case "
     "when style is null then '' else style end as style ,case when fldwidth is null then 2000 else fldwidth "
     "end as fldwidth from  s_infoitem where lower(tblname) =lower('A02') and lower(itemname) <> "
     "lower('A00') and itemname <>'' and itemdesc <>''   order by lower(fldorder) nulls first"},
    {"select format(A02.A0201,'yyyy-mm') as 起始年月, GB1_A0204.dmcpt as 学位, GB2_A0203.dmcpt as "
     "成果（项目）名称, A02.A0299 as 序号 from (( A02  left join GB1 GB1_A0204 on A02.A0204=GB1_A0204.dmcod) "
     "  left join GB2 GB2_A0203 on A02.A0203=GB2_A0203.dmcod)  Where A02.A00='P' order by A0299",
     "select A02.A0201 as 起始年月, GB1_A0204.dmcpt as 学位, GB2_A0203.dmcpt as 成果（项目）名称, A02.A0299 "
     "as 序号 from (( A02  left join GB1 GB1_A0204 on lower(A02.A0204)=lower(GB1_A0204.dmcod))   left join "
     "GB2 GB2_A0203 on lower(A02.A0203)=lower(GB2_A0203.dmcod))  Where lower(A02.A00)=lower('P') order by "
     "A0299 nulls first"},
    {"select A02.A0202 as 就读院校 from A02 Where A02.A00='P' order by A0201,A0202 desc",
     "select A02.A0202 as 就读院校 from A02 Where lower(A02.A00)=lower('P') order by A0201 nulls "
     "first,lower(A0202) desc nulls last"},
    {"select a0101 from a01 where a00='P'", "select a0101 from a01 where lower(a00)=lower('P')"},
    {"select count(A00) from a01 where a00 ='P'", "select count(A00) from a01 where lower(a00) =lower('P')"},
    {"select count(*) from A01 where A00 ='P'", "select count(*) from A01 where lower(A00) =lower('P')"},
    {"select count(*) from A02 where A00 ='P' and A0299 >0",
     "select count(*) from A02 where lower(A00) =lower('P') and A0299 >0"},
    {"select iif(max(A0299) is null,0,max(A0299))+1  from A02 where A00 ='P' ",
     "select case when max(A0299) is null then 0 else max(A0299) end +1  from A02 where lower(A00) "
     "=lower('P')"},
    {"delete from A01 where A00='P' ", "delete from A01 where lower(A00)=lower('P')"},
    {"delete from A02 where A00='P'  and A0299 = 2",
     "delete from A02 where lower(A00)=lower('P')  and A0299 = 2"},
    {"select * from A02 order by A0299", "select * from A02 order by A0299 nulls first"},
    {"update A02 set A0299 = 1 where a00='P' and A0299 = 201",
     "update A02 set A0299 = 1 where lower(a00)=lower('P') and A0299 = 201"},
    {"select iif(max(A0199) is null,0,max(A0199)) from a01  ",
     "select case when max(A0199) is null then 0 else max(A0199) end from a01"},
    {"insert into A02(A00,A0201,A0202,A0205,A0206,A0207,A0299) "
     "values('P','1990年03月','清华''\\大学','12','1','1.50','3')",
     "insert into A02(A00,A0201,A0202,A0205,A0206,A0207,A0299) values('P',timestamp "
     "'1990-03-01','清华''\\大学',12,true,1.5,3)"},
    {"update A02 set A0201 = null,A0201A = '1994年07月05日',A0202 = '',A0205 = '7',A0206 = '0' where A00='P' "
     "and A0299 = 3",
     "update A02 set A0201 = null,A0201A = timestamp '1994-07-05',A0202 = '',A0205 = 7,A0206 = false where "
     "lower(A00)=lower('P') and A0299 = 3"},
    {"delete from A02 where A00='P'  and A0299 = 3",
     "delete from A02 where lower(A00)=lower('P')  and A0299 = 3"},
    {"update A02 set A0299 = A0299 +200 where a00='P'",
     "update A02 set A0299 = A0299 +200 where lower(a00)=lower('P')"},
    {"select * from A02 where A00 ='P' order by A0201",
     "select * from A02 where lower(A00) =lower('P') order by A0201 nulls first"},
    {"select iif(a0101 is null,'',a0101) from a01 where a00='P'",
     "select case when a0101 is null then '' else a0101 end from a01 where lower(a00)=lower('P')"},
    {" delete from S_GUID ", " delete from S_GUID"},
    {"insert into S_GUID(val) values('a')", "insert into S_GUID(val) values('a')"},
    {"select id from S_GUID where val='a'", "select id from S_GUID where lower(val)=lower('a')"},
    {"select * from GB1 where dmattr =true and  (dmcod='bs' or dmcpt ='bs' or dmhnd='bs')",
     "select * from GB1 where dmattr =true and  (lower(dmcod)=lower('bs') or lower(dmcpt) =lower('bs') or "
     "lower(dmhnd)=lower('bs'))"},
    {"select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from GB1 where  dmattr =true and   dmcod<>'' "
     " and dmcpt<>''  and  ( DmCpt like '%B%S%' or   DmHnd like '%B%S%')     order by dmcod",
     "select dmcod,dmcpt,case when dmhnd is null then  '' else dmhnd end as dmhnd  from GB1 where  dmattr "
     "=true and   dmcod<>''  and dmcpt<>''  and  ( DmCpt ilike '%B%S%' escape '' or   DmHnd ilike '%B%S%' "
     "escape '')     order by lower(dmcod) nulls first"},
    {"select codtbldsc from s_CodeTableDefine where dmgrp ='GB1' ",
     "select codtbldsc from s_CodeTableDefine where lower(dmgrp) =lower('GB1')"},
    {"select bit from s_CodeLevDefine where dmgrp ='GB1' order by levelnum",
     "select bit from s_CodeLevDefine where lower(dmgrp) =lower('GB1') order by levelnum nulls first"},
    {"select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from GB1 where dmcod<>''  and dmcpt<>'' "
     "   and len(dmcod) =3  order by dmcod",
     "select dmcod,dmcpt,case when dmattr is null then false else dmattr end as dmattr  from GB1 where "
     "dmcod<>''  and dmcpt<>''    and char_length(dmcod) =3  order by lower(dmcod) nulls first"},
    {"select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from GB1 where  dmcod<>'' and dmcpt<>''  "
     "and len(dmcod) =3  order by dmcod",
     "select dmcod,dmcpt,case when dmattr is null then false else dmattr end as dmattr from GB1 where  "
     "dmcod<>'' and dmcpt<>''  and char_length(dmcod) =3  order by lower(dmcod) nulls first"},
    {"select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from GB1 where dmattr =true and   dmcod<>''  "
     "and dmcpt<>''  and  ( DmCpt like '%[ab]%' or   DmHnd like '%[ab]%')     order by dmcod",
     "select dmcod,dmcpt,case when dmhnd is null then  '' else dmhnd end as dmhnd  from GB1 where dmattr "
     "=true and   dmcod<>''  and dmcpt<>''  and  ( DmCpt ~* '^.*[ab].*$' or   DmHnd ~* '^.*[ab].*$')     "
     "order by lower(dmcod) nulls first"},
    {"select max(A0199)+1 from A01 where personid = 'P'",
     "select max(A0199)+1 from A01 where lower(personid) = lower('P')"},
};

TEST(StrictEngine, TakesEveryStatementOfTheCatalogue) {
  for (const Form& form : kCatalogue) EXPECT_EQ(Strict(form.statement), form.rendered);
}

TEST(StrictEngine, AConditionalExpressionEndsBeforeWhatFollows) {
  EXPECT_EQ(Strict("select iif(A0202='x',iif(A0299>1,1,2),3)+1 from A02"),
            "select case when lower(A0202)=lower('x') then case when A0299>1 then 1 else 2 end else 3 end +1 "
            "from A02");
  EXPECT_EQ(Strict("select iif(A0206,1,2)from A02"), "select case when A0206 then 1 else 2 end from A02");
  EXPECT_EQ(Strict("select format(iif(A0299 is null,0,A0299),'00')as 号 from A02"),
            "select case when A0299 is null then 0 else A0299 end as 号 from A02");
  for (const char* statement : {"select iif(A0206,1) from A02", "select iif(A0206,1,2,3) from A02"})
    EXPECT_EQ(Refused(statement), "-2147217900 SQL 语句语法错误：IIF 需要三个参数。");
}

TEST(StrictEngine, APatternWithASetIsARegularExpression) {
  const auto condition = [](const std::string& text) {
    return Strict("select A0202 from A02 where " + text).substr(28);
  };
  EXPECT_EQ(condition("A0202 like '[!a]%_[a-c][-x]'"), "A0202 ~* '^[^a].*.[a-c][\\-x]$'");
  EXPECT_EQ(condition("A0202 not like '[]^$.*\\d]'"), "A0202 !~* '^\\^\\$\\.\\*\\\\d\\]$'");
  EXPECT_EQ(condition("not A0202 like '[博硕]士''s'"), "not A0202 ~* '^[博硕]士\\''s$'");
  EXPECT_EQ(condition("A0202 like '%\\%[x'"), "A0202 ilike '%\\%[x' escape ''") << "no set: it never closes";
  EXPECT_EQ(condition("A0202 not like 'a_'and A0299=1"), "A0202 not ilike 'a_'  escape '' and A0299=1");
}

TEST(StrictEngine, APatternThatIsNoConstantIsRefused) {
  for (const char* statement :
       {"select A0202 from A02 where A0202 like A0203", "select A0202 from A02 where A0202 like ('a%')",
        "select A0202 from A02 where A0202 like 'a'+'%'", "select A0202 from A02 where A0202 like"})
    EXPECT_EQ(Refused(statement), "-2147217900 SQL 语句语法错误：LIKE 需要一个常量模式。");
}

TEST(StrictEngine, AConstantTakesTheKindOfTheColumnThatItIsComparedWith) {
  EXPECT_EQ(Strict("select A00 from A02 where A0206=1 and A0206=-1 and A0206<>'0' and A0206=true"),
            "select A00 from A02 where A0206=true and A0206=true and A0206<>false and A0206=true");
  EXPECT_EQ(Strict("select A00 from A02 where A0202=5 and A0299='5' and '4.5'<A0205 and A0207>='1.50'"),
            "select A00 from A02 where lower(A0202)=lower('5') and A0299=5 and 4.5 <A0205 and A0207>=1.5");
  EXPECT_EQ(Strict("delete from A02 where A0201='1990年3月' and A0201A>'1990-03-05 7:08'"),
            "delete from A02 where A0201=timestamp '1990-03-01' and A0201A>timestamp '1990-03-05 07:08:00'");
  EXPECT_EQ(Strict("select A00 from A02 where len(A0202)='3' and count(*)='4' and A77='5'"),
            "select A00 from A02 where char_length(A0202)=3 and count(*)=4 and lower(A77)=lower('5')");
  EXPECT_EQ(Refused("select A00 from A02 where A0299='x'"), "-2147217913 标准表达式中数据类型不匹配。");
  EXPECT_EQ(Refused("update A02 set A0202='a' where A0201='1990年13月'"),
            "-2147217913 标准表达式中数据类型不匹配。");
}

TEST(StrictEngine, TextsAreComparedWithoutRegardToCase) {
  EXPECT_EQ(Strict("select a.A00 from A01 a,A02 where a.A00=A02.A00 and A0101<A0202 and A0299=A0199"),
            "select a.A00 from A01 a,A02 where lower(a.A00)=lower(A02.A00) and lower(A0101)<lower(A0202) and "
            "A0299=A0199");
  EXPECT_EQ(Strict("select A00 from A02 as t where iif(t.A0202 is null,'',t.A0202)='x' and 'y'=(A0203)"),
            "select A00 from A02 as t where lower(case when t.A0202 is null then '' else t.A0202 end "
            ")=lower('x') and lower('y')=lower((A0203))");
  EXPECT_EQ(Strict("select A00 from A02 where A0202+'x'='y' and A0203=A0204+'z' and A0203=''"),
            "select A00 from A02 where A0202+'x'='y' and A0203=A0204+'z' and A0203=''")
      << "sums stay as they are";
  EXPECT_EQ(Strict("update A02 set A0202='a',A0203=A0204,A0206=(A0202='x')"),
            "update A02 set A0202='a',A0203=A0204,A0206=(lower(A0202)=lower('x'))");
  EXPECT_EQ(Strict("delete from A02 where ''<>A0202 and A0203=''"),
            "delete from A02 where ''<>A0202 and A0203=''")
      << "what is empty has no case";
  EXPECT_EQ(Strict("delete from A77 where B='x' and C=D"),
            "delete from A77 where lower(B)=lower('x') and C=D");
}

TEST(StrictEngine, ListsOfTextsDisregardCaseToo) {
  EXPECT_EQ(Strict("select A00 from A02 where A0202 in ('a',A0203) and A0299 in (1,2) and A77 not in ('b')"),
            "select A00 from A02 where lower(A0202) in (lower('a'),lower(A0203)) and A0299 in (1,2) and "
            "lower(A77) not in (lower('b'))");
  EXPECT_EQ(Strict("select A00 from A02 where A00 in (select A00 from A01 where A0101=A0202) and A0299=1"),
            "select A00 from A02 where lower(A00) in (select lower(A00) from A01 where "
            "lower(A0101)=lower(A0202)) and A0299=1");
  EXPECT_EQ(Strict("select A00 from A02 where A00 in (select A00+'x' from A01)"),
            "select A00 from A02 where A00 in (select A00+'x' from A01)")
      << "a sum stays as it is, and so does what it is compared with";
}

TEST(StrictEngine, ANameIsLookedForInItsSelectAndTheOneAround) {
  EXPECT_EQ(Strict("select A00 from A02 where A0299 in (select A0199 from A01 where A0299='1' and A0199 in "
                   "(select A0136 from A01 b where A0299='2' and b.A0199='3'))"),
            "select A00 from A02 where A0299 in (select A0199 from A01 where A0299=1 and A0199 in "
            "(select A0136 from A01 b where lower(A0299)=lower('2') and b.A0199=3))");
}

TEST(StrictEngine, NullComesFirstInEveryItemOfAnOrder) {
  EXPECT_EQ(Strict("select A00 from A02 order by A0299 desc,len(A0202),A0299+1 asc,A0202 asc,[A0203]"),
            "select A00 from A02 order by A0299 desc nulls last,char_length(A0202) nulls first,A0299+1 asc "
            "nulls first,lower(A0202) asc nulls first,lower(\"a0203\") nulls first");
  EXPECT_EQ(Strict("select A00 from A02 where A0299 in (select A0199 from A01 order by A0199) order by A00"),
            "select A00 from A02 where A0299 in (select A0199 from A01 order by A0199 nulls first) order by "
            "lower(A00) nulls first");
}

TEST(StrictEngine, NamesInBracketsStandInQuotes) {
  EXPECT_EQ(Strict("insert into [A02]([A00],[a0201],A0206) values('P','1990年03月','-1')"),
            "insert into \"a02\"(\"a00\",\"a0201\",A0206) values('P',timestamp '1990-03-01',true)");
  EXPECT_EQ(Strict("update [A02] set [A0202]='c' where [A02].[A0201]='1990-03-01' and [a\"b]='x'"),
            "update \"a02\" set \"a0202\"='c' where \"a02\".\"a0201\"=timestamp '1990-03-01' and "
            "lower(\"a\"\"b\")=lower('x')");
}

TEST(StrictEngine, ALongAliasHasAShortNameAndIsGivenBackWhole) {
  const std::string name = "一二三四五六七八九十一二三四五六七八九十一二";
  const Statement statement =
      Rendered("select A0299 as 一二三四五六七八九十一二三四五六七八九十一,format(A0201,'yyyy') as " + name +
               ",A0202 as [姓 名],A0203 from A02 order by " + name + " desc,A02." + name);
  EXPECT_EQ(
      statement.text,
      "select A0299 as 一二三四五六七八九十一二三四五六七八九十一,A0201 as c2,A0202 as \"姓 名\",A0203 from "
      "A02 order by c2 desc nulls last,A02." +
          name + " nulls first");
  EXPECT_EQ(statement.ColumnAt(1, "c2", "timestamp").name, name);
  EXPECT_EQ(statement.ColumnAt(1, "c2", "timestamp").format, "yyyy");
  EXPECT_EQ(statement.ColumnAt(1, "c2", "timestamp").kind, ColumnKind::kDate);
  EXPECT_EQ(statement.ColumnAt(2, "姓 名", "text").name, "姓 名");
  EXPECT_EQ(statement.ColumnAt(3, "a0203", "text").name, "a0203");
}

TEST(StrictEngine, EveryTableOfAListBehindFromIsKnown) {
  EXPECT_EQ(Strict("select b.A00 from A01 a, A02 b, GB1 c where b.A0206=1 and c.dmattr=0 and a.A0199='5'"),
            "select b.A00 from A01 a, A02 b, GB1 c where b.A0206=true and c.dmattr=false and a.A0199=5");
}

TEST(StrictEngine, ANumberBesideATextIsAText) {
  EXPECT_EQ(Strict("select A00 from A02 where '1'=1"), "select A00 from A02 where lower('1')=lower('1')");
}

// How their time grows is measured by the benchmarks.
TEST(StrictEngine, LongAndDeepStatementsAreTranslatedWithEveryConstant) {
  std::string condition = "A0202='x'";
  std::string nested = "A0299";
  for (int i = 0; i < 4000; ++i) {
    condition += " or (t.A0203 in ('a','b') and iif(A0206,'1','0')='1' and A0204 like '[a]%')";
    nested = "iif(A0206," + nested + ",1)";
  }
  std::string deep = "A0202='x'";
  for (int i = 0; i < 1000; ++i) deep = "A00 in (select A00 from A01 where " + deep + ")";
  EXPECT_EQ(Rendered("select A00 from A02 t where " + condition).constants.size(), 24001U);
  EXPECT_EQ(Rendered("select " + nested + " from A02").constants.size(), 4000U);
  EXPECT_EQ(Rendered("select A00 from A02 where " + deep).constants.size(), 1U);
}

TEST(Renderer, TheTableThatAStatementChangesIsNamedAsTheEngineWants) {
  const Renderer renderer{.stored_in = "main."};
  const ColumnLookup none = [](std::string_view) { return nullptr; };
  for (const auto& [statement, text] : {
           std::pair("insert into A02( A00 ,A0299) values('P','1')",
                     "insert into main.A02( A00 ,A0299) values('P','1')"),
           std::pair("update A02 set A0299 = A0299 +200 where a00='P'",
                     "update main.A02 set A0299 = A0299 +200 where a00='P'"),
           std::pair("delete from A02 where A00='P' ", "delete from main.A02 where A00='P'"),
           std::pair("delete from [A02]", "delete from main.[A02]"),
           std::pair("select * from A02 order by A0299", "select * from A02 order by A0299"),
       })
    EXPECT_EQ(Translate(statement, none, renderer).text, text);
  const Statement insert = Translate("insert into T(a) values('x')", none, renderer);
  ASSERT_EQ(insert.constants.size(), 1U);
  EXPECT_EQ(insert.text.substr(insert.constants[0].position, insert.constants[0].size), "'x'");
}

TEST(Renderer, BackslashesAreDoubledWhereAnEngineTakesThemForItsOwn) {
  const Renderer engine{.doubles_backslashes = true};
  const auto text = [&](std::string_view statement) { return Translate(statement, ColumnsOf, engine).text; };
  EXPECT_EQ(text("select 'a\\' as x from A02 where A0202='b\\''c'"),
            "select 'a\\\\' as x from A02 where A0202='b\\\\''c'");
  EXPECT_EQ(text("insert into A02(A0202) values('\\')"), "insert into A02(A0202) values('\\\\')");
}

}  // namespace
}  // namespace dossierkit::jet
