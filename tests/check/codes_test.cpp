// What the check says of the code tables: one thing made wrong in the sample, and all that is found.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Codes : public Check {};

TEST_P(Codes, AreTold) {
  database->RunScript(GetParam().script);
  EXPECT_EQ(Faults(), GetParam().faults);
}

const std::vector<Mutation> kMutations = {
    {"ACodeTableThatIsGone",
     "drop table LCCYJS;",
     {"表 s_infoitem，行 A08.A0805，列 CodeTable：数据库中没有代码表 LCCYJS，一打开“专业成果”的记录，"
      "窗口就会关闭；请建立这张表，或改正 CodeTable。"}},
    {"ACodeTableThatIsUnknown",
     "update s_infoitem set CodeTable='LCZC' where itemname='A0304';",
     {"表 s_infoitem，行 A03.A0304，列 CodeTable：数据库中没有代码表 LCZC，一打开“工作经历”的记录，"
      "窗口就会关闭；请建立这张表，或改正 CodeTable。"}},
    {"ACodeTableWithoutAColumn",
     "drop index ix_LCCYJS_dmhnd; alter table LCCYJS drop column dmhnd;",
     {"表 LCCYJS，列 dmhnd：没有这一列，代码查不出来；请在代码表中补上这一列。"}},
    {"ACodeTableWithoutATitle",
     "delete from s_CodeTableDefine where dmgrp='LCCYJS';",
     {"表 s_CodeTableDefine，行 LCCYJS：缺少这一行，选择代码的窗口没有标题；请补上这一行。"}},
    {"ATitleThatIsNull",
     "update s_CodeTableDefine set codtbldsc=null where dmgrp='LCCYJS';",
     {"表 s_CodeTableDefine，行 LCCYJS，列 codtbldsc：是空值，选择代码的窗口没有标题；请填写代码表的名称。"}},
    {"ACodeTableWithoutLevels",
     "delete from s_CodeLevDefine where dmgrp='LCCYJS';",
     {"表 s_CodeLevDefine，行 "
      "LCCYJS：没有一行，选择代码的窗口是空的，输入的文字也不会查找；请为每一级补上一行。"}},
    {"ALevelThatIsNoNumber",
     "update s_CodeLevDefine set [bit]='两' where dmgrp='LCCYJS';",
     {"表 s_CodeLevDefine，行 LCCYJS 第 1 级，列 bit：“两”不是代码的长度，这一级的代码在树中都找不到；"
      "请改为这一级代码的总字数。"}},
    {"ALevelOfNothing",
     "update s_CodeLevDefine set [bit]=0 where dmgrp='LCCYJS';",
     {"表 s_CodeLevDefine，行 LCCYJS 第 1 级，列 bit：“0”不是代码的长度，这一级的代码在树中都找不到；"
      "请改为这一级代码的总字数。"}},
    {"RowsWithoutACodeOrACaptionAreNone",
     "insert into LCCYJS values(null,'甲','j',1); insert into LCCYJS values(null,'乙','y',1);"
     "insert into LCCYJS values('999',null,'b',1);",
     {}},
    {"TwoLevelsOfOneLength",
     "insert into s_CodeLevDefine values('LCCYJS',2,1);",
     {"表 s_CodeLevDefine，行 LCCYJS 第 2 级，列 bit：与上一级的长度相同，都是 "
      "1，树中会出现选不到或选错的代码；"
      "请使各级的长度依次增加。"}},
    {"ALevelShorterThanTheOneAbove",
     "insert into s_CodeLevDefine values('GB2260',4,5);",
     {"表 s_CodeLevDefine，行 GB2260 第 4 级，列 "
      "bit：比上一级的长度短，这一级的代码会挂错位置；请使各级的长度依次增加。"}},
    {"ACodeOfNoLevel",
     "insert into LCCYJS values('999','其他成员','qtcy',1);",
     {"表 LCCYJS，行 999，列 dmcod：长度 3 不是任何一级的长度，在树中找不到；请改正代码，或在 "
      "s_CodeLevDefine "
      "中补上这一级。"}},
    {"ACodeWithoutItsParent",
     "insert into GB2260 values('990101','某县','mx',1);",
     {"表 GB2260，行 990101，列 dmcod：缺少上级 9901，在树中会挂到别的代码之下；请补上上级的一行。"}},
    {"ACodeTwice",
     "insert into LCCYJS select * from LCCYJS where dmcod='1';",
     {"表 LCCYJS，行 1，列 "
      "dmcod：这个代码有不止一行，使用它的记录在列表中会重复，树中也会选错；请只保留一行。"}},
    {"NoCodeOfTheFirstLevel",
     "update s_CodeLevDefine set [bit]=4 where dmgrp='LCCYJS';",
     {"表 LCCYJS，列 dmcod：没有长度为 4 的第一级代码，选择代码的窗口是空的；请补上第一级，或改正 "
      "s_CodeLevDefine。"}},
    {"AFlagThatIsTwo",
     "update LCCYJS set dmattr=2 where dmcod='1';",
     {"表 LCCYJS，行 1，列 dmattr：不是 0 或 1，录入时查不到这个代码；请改为 1（可选）或 0（标题）。"}},
    {"AFlagThatIsNull",
     "update LCCYJS set dmattr=null where dmcod='1';",
     {"表 LCCYJS，行 1，列 dmattr：是空值，录入时查不到这个代码；请改为 1（可选）或 0（标题）。"}},
};

INSTANTIATE_TEST_SUITE_P(Check, Codes, testing::ValuesIn(kMutations), NameOf);

}  // namespace
}  // namespace dossierkit::tests
