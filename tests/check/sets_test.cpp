// What the check says of the table of sets: one thing made wrong in the sample, and all that is found.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Sets : public Check {};

TEST_P(Sets, AreTold) {
  database->RunScript(GetParam().script);
  EXPECT_EQ(Faults(), GetParam().faults);
}

const std::vector<Mutation> kMutations = {
    {"ATableOfTheMetadataThatIsMissing",
     "drop table s_CodeLevDefine;",
     {"表 s_CodeLevDefine：没有这张表，窗口打不开；请照 dossier create-empty 建立的空数据库补上。"}},
    {"AColumnOfTheMetadataThatIsMissing",
     "alter table s_infoitem drop column FldExplain;",
     {"表 s_infoitem，列 FldExplain：没有这一列，用到它时窗口会关闭；请照 dossier create-empty 建立的空数据库"
      "补上。"}},
    {"NoSetAtAll",
     "delete from s_infotable;",
     {"表 s_infotable：没有一行，菜单中没有信息集，窗口打不开；请照 dossier create-empty "
      "建立的空数据库填写。"}},
    {"ASetTwice",
     "insert into s_infotable select * from s_infotable where tblname='A05';",
     {"表 s_infotable，行 A05，列 tblname：有不止一行，菜单中会出现两个“访问进修”；请只保留一行。"}},
    {"ASetWithoutAPage",
     "insert into s_infotable(tblname,tbldesc,OtherProp,Property) values('A07','专业特长',17,0);",
     {"表 s_infotable，行 A07，列 tblname：没有信息集 A07 的页面，一点击菜单项“专业特长”，窗口就会关闭；"
      "请删除这一行。"}},
    {"ASetWithoutAPageInSmallLetters",
     "insert into s_infotable(tblname,tbldesc,OtherProp,Property) values('a07','专业特长',17,0);",
     {"表 s_infotable，行 a07，列 tblname：没有信息集 a07 的页面，一点击菜单项“专业特长”，窗口就会关闭；"
      "请删除这一行。"}},
    {"ASetWithoutATable",
     "drop trigger tr_A01_delete; drop table A06;",
     {"表 s_infotable，行 A06，列 tblname：数据库中没有表 A06，一打开“学术会议”，窗口就会关闭；"
      "请建立这张表，或删除这一行。"}},
    {"ASetWithoutRows",
     "delete from s_infoitem where tblname='A14';",
     {"表 s_infoitem，行 A14：没有信息集 A14 的任何一行，一打开“领域认识”，窗口就会关闭；请补上各项的行，"
      "或从 s_infotable 删除 A14。"}},
    {"NoBasicData",
     "delete from s_infotable where tblname='A01';",
     {"表 s_infotable，行 A01：没有这一行，新人员无法录入；请补上这一行。"}},
    {"NoRecommendation",
     "delete from s_infotable where tblname='B01';",
     {"表 s_infotable，行 B01：没有这一行，一打开“单位推荐情况”，窗口就会关闭；请补上这一行。"}},
    {"AnotherSetBeforeTheBasicData",
     "update s_infotable set OtherProp=0 where tblname='A02';",
     {"表 s_infotable，行 A02，列 OtherProp：排在 A01 之前，录入新人员时窗口中没有页面，各命令都不起作用；"
      "请让 A01 的 OtherProp 最小。"}},
    {"BasicDataWithManyRecords",
     "update s_infotable set Property=0 where tblname='A01';",
     {"表 s_infotable，行 A01，列 Property：为 0（一人多条），新人员无法保存；请改为 1（一人一条）。"}},
    {"OneRecordInASetWhosePageHasNoList",
     "update s_infotable set Property=0 where tblname='A12';",
     {"表 s_infotable，行 A12，列 Property：为 0（一人多条），而表 A12 没有序号列 A1299，一打开“主要成就”，"
      "窗口就会关闭；请改为 1（一人一条）。"}},
    {"OneRecordInASetWhosePageHasNoListThoughItsTableIsNumbered",
     "alter table A12 add column A1299 integer; update s_infotable set Property=0 where tblname='A12';",
     {"表 s_infotable，行 A12，列 Property：为 0（一人多条），而“主要成就”的页面没有列表的位置，"
      "除第一条以外的记录几乎选不到；请改为 1（一人一条）。"}},
    {"OneRecordInASetWhoseTableHasNoNumber",
     "update s_infotable set Property=0 where tblname='B01';",
     {"表 s_infotable，行 B01，列 Property：为 0（一人多条），而表 B01 没有序号列 "
      "B0199，一打开“单位推荐情况”，"
      "窗口就会关闭；请改为 1（一人一条）。"}},
    {"ManyRecordsInASetOfOne",
     "update s_infotable set Property=1 where tblname='A03';",
     {"表 s_infotable，行 A03，列 Property：为 "
      "1（一人一条），而“工作经历”的页面一人多条，“增加”和“删除”不能用，"
      "只看得到第一条记录，保存会删除此人的其余记录；请改为 0（一人多条）。"}},
    {"ManyRecordsInASetOfOneWhoseListIsHidden",
     "update s_infotable set Property=1 where tblname='A10';",
     {"表 s_infotable，行 A10，列 Property：为 1（一人一条），而表 A10 有序号列 A1099，“增加”和“删除”不能用，"
      "只看得到第一条记录，保存会删除此人的其余记录；请改为 0（一人多条）。"}},
    {"APageThatTakesEitherOne",
     "alter table B01 add column B0199 integer; update B01 set B0199=1;"
     "insert into s_infoitem(tblname,itemname,itemdesc,FldWidth,FieldType) "
     "values('B01','B0199','序号',0,'int');"
     "update s_infotable set Property=0 where tblname='B01';",
     {}},
    {"APropertyThatIsNull",
     Redeclared("s_infotable", "boolean not null", "boolean") +
         "update s_infotable set Property=null where tblname='A03';",
     {"表 s_infotable，行 A03，列 Property：是空值，一打开“工作经历”，窗口就会关闭（提示“无效使用 "
      "Null”）；请填 1（一人一条）或 0（一人多条）。"}},
    {"APropertyThatIsNoNumber",
     "update s_infotable set Property='是' where tblname='A12';",
     {"表 s_infotable，行 A12，列 Property：“是”不是 0 或 "
      "1，一打开“主要成就”，窗口就会关闭（提示“类型不匹配”）；"
      "请改为 1（一人一条）或 0（一人多条）。"}},
    {"PropertyDeclaredAsInteger",
     Redeclared("s_infotable", "Property    boolean", "Property    integer"),
     {"表 s_infotable，列 Property：这一列不是布尔型，一人一条的信息集（值为 1）会被当作一人多条；"
      "请把这一列改为布尔型（boolean）。"}},
    {"AMenuCaptionThatIsNull",
     "update s_infotable set tbldesc=null where tblname='A09';",
     {"表 s_infotable，行 A09，列 tbldesc：是空值，窗口打不开（提示“无效使用 Null”）；请填写菜单上的名称。"}},
    {"ALimitThatIsNoNumber",
     "update s_infotable set maxnumber='五' where tblname='A04';",
     {"表 s_infotable，行 A04，列 maxnumber：“五”不是 16 位整数，在“主要兼职”中增加或保存记录时窗口会关闭；"
      "请改为 0（不限）至 32767 的整数。"}},
    {"ALimitBeyond16Bits",
     "update s_infotable set maxnumber=40000 where tblname='A04';",
     {"表 s_infotable，行 A04，列 maxnumber：“40000”不是 16 "
      "位整数，在“主要兼职”中增加或保存记录时窗口会关闭；"
      "请改为 0（不限）至 32767 的整数。"}},
    {"AnOrderColumnThatIsMissing",
     "update s_infotable set orderfield='A0309' where tblname='A03';",
     {"表 s_infotable，行 A03，列 orderfield：不能按“A0309”排序，一打开“工作经历”，窗口就会关闭；"
      "请改为表 A03 中已有的列名，或清空（按序号排序）。"}},
    {"ATableWithoutThePerson",
     "drop trigger tr_A01_delete; drop index ix_A14_A00; alter table A14 drop column A00;",
     {"表 A14，列 A00：没有这一列，“领域认识”无法读出或保存；请在表中补上这一列。"}},
    {"ATableWithoutTheRecordNumber",
     "drop index ix_A15_A00_A1599; alter table A15 drop column A1599;",
     {"表 A15，列 A1599：没有这一列，“近期工作”无法读出或保存；请在表中补上这一列。"}},
    {"BasicDataWithoutThePersonType",
     "alter table A01 drop column A0136;",
     {"表 A01，列 A0136：没有这一列，“基本信息”无法读出或保存；请在表中补上这一列。"}},
};

INSTANTIATE_TEST_SUITE_P(Check, Sets, testing::ValuesIn(kMutations), NameOf);

}  // namespace
}  // namespace dossierkit::tests
