// What every engine must do with the statements of the dialect. An engine's test program defines
// OpenConformanceDatabase and includes this header in one file.
#pragma once

#include "tests/adapters/conformance_dialect.h"
#include "tests/adapters/conformance_fixture.h"
#include "tests/adapters/conformance_transactions.h"

namespace dossierkit::conformance {

TEST_F(Conformance, MenuListsTheSetsOfTheLetterInTheirOrder) {
  AddSets();
  const auto rows =
      connection_->Execute("SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp");
  ASSERT_EQ(rows->RecordCount(), 2);
  EXPECT_EQ(rows->Fields("TBLDESC"), Value("基本信息"));
  rows->MoveNext();
  EXPECT_EQ(rows->Fields("tblname"), Value("A02"));
}

TEST_F(Conformance, DescriptionOfASetIsNeverNull) {
  AddSets();
  Run("insert into s_infotable(tblname,Property) values('A03',0)");
  EXPECT_EQ(One("select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A02'"),
            Value("学习经历"));
  EXPECT_EQ(One("select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A03'"), Value(""));
}

TEST_F(Conformance, OrderFieldIsFoundOnlyWhereItHasText) {
  AddSets();
  const auto of = [&](const std::string& set) {
    return connection_
        ->Execute(
            "select iif(orderfield is null , '',orderfield) as orderfield  from s_infotable where tblname "
            "='" +
            set + "'  and orderfield<>'' ")
        ->RecordCount();
  };
  EXPECT_EQ(of("A02"), 1);
  EXPECT_EQ(of("A01"), 0);
  EXPECT_EQ(of("B01"), 0);
}

TEST_F(Conformance, LimitOfASetIsZeroWhereItIsNull) {
  AddSets();
  const std::string query =
      "select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='";
  EXPECT_EQ(environment::ToInt16(One(query + "A02'")), 5);
  EXPECT_EQ(environment::ToInt16(One(query + "A01'")), 0);
}

TEST_F(Conformance, BooleanColumnsComeBackAsBoolean) {
  AddSets();
  EXPECT_EQ(One(" select Property from s_infotable  where TblName ='A02'"), Value(false));
  EXPECT_EQ(One(" select Property from s_infotable  where TblName ='A01'"), Value(true));
}

TEST_F(Conformance, FieldsOfASetHaveAllColumnsByName) {
  Run("insert into s_infoitem(tblname,itemname,itemdesc,FldWidth)"
      " values('A02','A0201','起始年月','1200')");
  const auto rows = connection_->Execute(" select * from s_infoitem  where tblname ='a02'");
  ASSERT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(rows->Fields("check"), Value(Null{}));
  EXPECT_EQ(rows->Fields("FldWidth"), Value(1200));
  EXPECT_EQ(rows->Fields("isnull"), Value(Null{}));
  EXPECT_EQ(rows->Fields("style"), Value(Null{}));
  EXPECT_EQ(rows->FieldCount(), 12U);
}

TEST_F(Conformance, RecordIsReadByPersonAndNumber) {
  Run("insert into A02(A00,A0202,A0299) values('p','一','1')");
  Run("insert into A02(A00,A0202,A0299) values('p','二','2')");
  EXPECT_EQ(connection_->Execute("select * from A02 where a00 ='P' and A0299=2")->Fields("a0202"),
            Value("二"));
  EXPECT_EQ(connection_->Execute("select * from A02 where a00 ='P'")->RecordCount(), 2);
  EXPECT_EQ(connection_->Execute("select * from A02 where a00 ='Q'")->RecordCount(), 0);
}

TEST_F(Conformance, CaptionOfACodeIsFound) {
  AddCodes();
  EXPECT_EQ(One("select dmcpt from GB1 where dmcod='101'"), Value("博士"));
}

TEST_F(Conformance, CaptionOfTheRecordNumberIsFound) {
  Run("insert into s_infoitem(tblname,itemname,itemdesc) values('A02','A0299','序号')");
  EXPECT_EQ(
      One("select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A02' and itemname = 'A0299' "),
      Value("序号"));
}

TEST_F(Conformance, ColumnsOfTheListLeaveOutPersonAndFieldsWithoutCaption) {
  Run("insert into s_infoitem(tblname,itemname,itemdesc,fldorder,codetable,style) "
      "values('A02','A0204','学位','2','GB1','')");
  Run("insert into s_infoitem(tblname,itemname,itemdesc,fldorder,style) "
      "values('A02','A0201','起始年月','1','yyyy-mm')");
  Run("insert into s_infoitem(tblname,itemname,itemdesc,fldorder,fldwidth) "
      "values('A02','A0299','序号','3',0)");
  Run("insert into s_infoitem(tblname,itemname,itemdesc) values('A02','A00','人员')");
  Run("insert into s_infoitem(tblname,itemname) values('A02','A0203')");
  const auto rows = connection_->Execute(
      "select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,iif(style is "
      "null,'',style) as style "
      ",iif(fldwidth is null,2000,fldwidth) as fldwidth from  s_infoitem where tblname ='A02' and itemname "
      "<> 'A00' and "
      "itemname <>'' and itemdesc <>''   order by fldorder ");
  ASSERT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(rows->Fields("itemname"), Value("A0201"));
  EXPECT_EQ(rows->Fields("codetable"), Value(""));
  EXPECT_EQ(environment::ToInt16(rows->Fields("fldwidth")), 2000);
  EXPECT_EQ(environment::ToInt16(rows->ValueAt(3, 4)), 0);
  rows->Filter("codetable<>''");
  EXPECT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(rows->Fields("itemname"), Value("A0204"));
}

TEST_F(Conformance, ListJoinsCodesFormatsDatesAndNamesColumnsByCaption) {
  AddCodes();
  Run("insert into A02(A00,A0201,A0204,A0203,A0299) values('P','1990年03月','101','1','1')");
  Run("insert into A02(A00,A0204,A0299) values('P','999','2')");
  const auto rows = connection_->Execute(
      "select format(A02.A0201,'yyyy-mm') as 起始年月, GB1_A0204.dmcpt as 学位, GB2_A0203.dmcpt as "
      "成果（项目）名称, "
      "A02.A0299 as 序号 from (( A02  left join GB1 GB1_A0204 on A02.A0204=GB1_A0204.dmcod)  left join GB2 "
      "GB2_A0203 on "
      "A02.A0203=GB2_A0203.dmcod)  Where A02.A00='P' order by A0299");
  ASSERT_EQ(rows->RecordCount(), 2);
  EXPECT_EQ(rows->FieldName(0), "起始年月");
  EXPECT_EQ(rows->Fields("起始年月"), Value("1990-03"));
  EXPECT_EQ(rows->Fields("学位"), Value("博士"));
  EXPECT_EQ(rows->Fields("成果（项目）名称"), Value("北京大学"));
  EXPECT_EQ(rows->Fields("序号"), Value(1));
  rows->MoveNext();
  EXPECT_EQ(rows->Fields("起始年月"), Value(""));
  EXPECT_EQ(rows->Fields("学位"), Value(Null{}));
}

TEST_F(Conformance, OneCodeTableServesTwoFields) {
  AddCodes();
  Run("insert into A02(A00,A0203,A0204,A0299) values('P','101','102','1')");
  const auto rows = connection_->Execute(
      "select GB1_A0203.dmcpt as 甲, GB1_A0204.dmcpt as 乙 from (( A02  left join GB1 GB1_A0203 on "
      "A02.A0203=GB1_A0203.dmcod)  left join GB1 GB1_A0204 on A02.A0204=GB1_A0204.dmcod)  Where "
      "A02.A00='P' ");
  EXPECT_EQ(rows->Fields("甲"), Value("博士"));
  EXPECT_EQ(rows->Fields("乙"), Value("硕士"));
}

TEST_F(Conformance, JoinsIgnoreCase) {
  Run("insert into GB1(dmcod,dmcpt) values('a1','甲')");
  Run("insert into A02(A00,A0204,A0299) values('P','A1','1')");
  EXPECT_EQ(
      One("select GB1_A0204.dmcpt as 甲 from ( A02  left join GB1 GB1_A0204 on A02.A0204=GB1_A0204.dmcod)"),
      Value("甲"));
}

TEST_F(Conformance, CaptionWithABlankIsASyntaxError) {
  EXPECT_EQ(FailureOf("select A02.A0202 as 姓 名 from A02 Where A02.A00='P' ").number(),
            environment::kSyntaxError);
}

TEST_F(Conformance, PersonsAreCounted) {
  Run("insert into a01(A00,A0101) values('P','王一')");
  EXPECT_EQ(One("select a0101 from a01 where a00='P'"), Value("王一"));
  EXPECT_EQ(One("select count(A00) from a01 where a00 ='p'"), Value(1));
  EXPECT_EQ(One("select count(*) from A01 where a00='Q'"), Value(0));
  EXPECT_EQ(One("select count(*) from A02 where A00 ='P' and A0299 >0"), Value(0));
  EXPECT_EQ(One("select iif(a0101 is null,'',a0101) from a01 where a00='P'"), Value("王一"));
}

TEST_F(Conformance, NextNumberIsOneBehindTheLargest) {
  const std::string next = "select iif(max(A0299) is null,0,max(A0299))+1  from A02 where A00 ='P' ";
  EXPECT_EQ(One(next), Value(1));
  Run("insert into A02(A00,A0299) values('P','7')");
  Run("insert into A02(A00,A0299) values('Q','9')");
  EXPECT_EQ(One(next), Value(8));
  EXPECT_EQ(One("select iif(max(A0199) is null,0,max(A0199)) from a01  "), Value(0));
}

TEST_F(Conformance, RecordsAreRaisedAndNumberedAnew) {
  for (const char* number : {"1", "2", "3"}) {
    Run("insert into A02(A00,A0202,A0299) values('P','" + std::string(number) + "','" + number + "')");
  }
  Run("delete from A02 where A00='P'  and A0299 = 2");
  Run("update A02 set A0299 = A0299 +200 where a00='P'");
  EXPECT_EQ(List("select * from A02 order by A0299"), "P,P");
  EXPECT_EQ(List("select A0299 from A02 where A00 ='P' order by A0299"), "201,203");
  Run("update A02 set A0299 = 1 where a00='P' and A0299 = 201");
  Run("update A02 set A0299 = 2 where a00='P' and A0299 = 203");
  EXPECT_EQ(List("select A0202 from A02 where A00 ='P' order by A0299"), "1,3");
}

TEST_F(Conformance, UpdateWritesQuotedValuesNullAndEmptyText) {
  Run("insert into A02(A00,A0201,A0202,A0203,A0299) values('P','1990年03月','旧','旧','1')");
  Run("update A02 set A0201 = null,A0202 = '',A0203 = '新', A0205 = '12',A0206 = '1' where A00='P' and A0299 "
      "= 1");
  const auto rows = connection_->Execute("select * from A02 where a00 ='P' and A0299=1");
  EXPECT_EQ(rows->Fields("A0201"), Value(Null{}));
  EXPECT_EQ(rows->Fields("A0202"), Value(""));
  EXPECT_EQ(rows->Fields("A0203"), Value("新"));
  EXPECT_EQ(rows->Fields("A0205"), Value(12));
  EXPECT_EQ(rows->Fields("A0206"), Value(true));
}

TEST_F(Conformance, DeleteOfAPersonTakesAllHisRows) {
  Run("insert into A02(A00,A0299) values('P','1')");
  Run("insert into A02(A00,A0299) values('p','2')");
  Run("delete from A02 where A00='P' ");
  EXPECT_EQ(One("select count(*) from A02 where a00='P'"), Value(0));
}

TEST_F(Conformance, EngineMakesPersonIdentifiers) {
  std::string former;
  for (int i = 0; i < 3; ++i) {
    Run(" delete from S_GUID ");
    Run("insert into S_GUID(val) values('a')");
    const std::string id = environment::TextOf(One("select id from S_GUID where val='a'"));
    EXPECT_EQ(ShapeOf(id), "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}") << id;
    EXPECT_NE(id, former);
    former = id;
  }
}

TEST_F(Conformance, ExactLookupTakesCodeCaptionOrShorthandOfSelectableRows) {
  AddCodes();
  const auto found = [&](const std::string& x) {
    return List("select * from GB1 where dmattr =true and  (dmcod='" + x + "' or dmcpt ='" + x +
                "' or dmhnd='" + x + "')");
  };
  EXPECT_EQ(found("101"), "101");
  EXPECT_EQ(found("硕士"), "102");
  EXPECT_EQ(found("BS"), "101");
  EXPECT_EQ(found("学位"), "");
  EXPECT_EQ(found("无名"), "");
}

TEST_F(Conformance, PatternLookupSearchesCaptionAndShorthand) {
  AddCodes();
  const auto found = [&](const std::string& p) {
    return List(
        "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from GB1 where  dmattr =true and   "
        "dmcod<>''  and "
        "dmcpt<>''   and  ( DmCpt like '" +
        p + "' or   DmHnd like '" + p + "')     order by dmcod");
  };
  EXPECT_EQ(found("%士%"), "101,102");
  EXPECT_EQ(found("%B%S%"), "101");
  EXPECT_EQ(found("%[%"), "");
  EXPECT_EQ(found("%"), "101,102");
}

TEST_F(Conformance, LikeKnowsSetsAndSingleCharacters) {
  AddSets();
  EXPECT_EQ(List("select tblname from s_infotable where tblname like '[!a]%'"), "B01");
  EXPECT_EQ(List("select tblname from s_infotable where tblname like '[a-b]01' order by tblname"), "A01,B01");
  EXPECT_EQ(List("select tblname from s_infotable where tbldesc like '学_经历'"), "A02");
}

TEST_F(Conformance, LikeFindsACaptionWhoseShorthandIsNull) {
  AddCodes();
  EXPECT_EQ(List("select dmcod from GB1 where  ( DmCpt like '%无%' or   DmHnd like '%无%') "), "103");
}

TEST_F(Conformance, TreeLevelsAreFoundByLengthWithNullReadAsNotSelectable) {
  AddCodes();
  const auto rows = connection_->Execute(
      "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from GB1 where dmcod<>''  and "
      "dmcpt<>''    and "
      "len(dmcod) =3  order by dmcod");
  ASSERT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(rows->Fields("dmattr"), Value(true));
  EXPECT_EQ(rows->ValueAt(3, 2), Value(false));
}

TEST_F(Conformance, LenCountsCharacters) {
  AddCodes();
  EXPECT_EQ(List("select dmcod from GB2 where len(dmcpt) =4"), "1");
}

TEST_F(Conformance, CodeLevelsAndTitleAreRead) {
  Run("insert into s_CodeTableDefine(dmgrp,codtbldsc) values('GB1','学位')");
  Run("insert into s_CodeLevDefine(dmgrp,levelnum,bit) values('GB1','2','3')");
  Run("insert into s_CodeLevDefine(dmgrp,levelnum,bit) values('GB1','1','1')");
  EXPECT_EQ(One("select codtbldsc from s_CodeTableDefine where dmgrp ='GB1' "), Value("学位"));
  EXPECT_EQ(List("select bit from s_CodeLevDefine where dmgrp ='GB1' order by levelnum"), "1,3");
}

}  // namespace dossierkit::conformance
