// What the check says of what can only be told by writing: one thing made wrong in the sample, and all that
// is found.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Writing : public Check {};

TEST_P(Writing, AreTold) {
  database->RunScript(GetParam().script);
  EXPECT_EQ(Faults(), GetParam().faults);
}

const std::vector<Mutation> kMutations = {
    {"NoDefaultOfTheIdentifier",
     "drop table S_GUID; create table S_GUID(id varchar(38) collate nocase, val varchar(10) collate "
     "nocase);",
     {"表 S_GUID，列 "
      "id：插入后没有自动生成值，新人员无法录入；请参照示例数据库，让这一列在插入时自动生成带花括号的 "
      "GUID。"}},
    {"AnIdentifierOfAnotherLength",
     "drop table S_GUID; create table S_GUID(id varchar(38) collate nocase default ('ABCD-1234'),"
     " val varchar(10) collate nocase);",
     {"表 S_GUID，列 id：自动生成的“ABCD-1234”不是带花括号的 38 个字符，新人员的标识会缺头少尾或重复；"
      "请参照示例数据库改正这一列的默认值。"}},
    {"AnIdentifierWithoutItsBrace",
     "drop table S_GUID; create table S_GUID(id varchar(38) collate nocase default "
     "('x7eaa099-2cb6-416d-a6dc-283cf0480ff90}'), val varchar(10) collate nocase);",
     {"表 S_GUID，列 id：自动生成的“x7eaa099-2cb6-416d-a6dc-283cf0480ff90}”不是带花括号的 38 "
      "个字符，新人员的标识会缺头少尾或重复；请参照示例数据库改正这一列的默认值。"}},
    {"AnIdentifierThatIsNotMade",
     "drop table S_GUID; create table S_GUID(id varchar(38) collate nocase not null, val varchar(10) "
     "collate nocase);",
     {"表 S_GUID，列 id：无法插入一行（违反了数据库的约束：NOT NULL constraint failed: S_GUID.id。），"
      "新人员无法录入；请参照示例数据库，让这一列在插入时自动生成带花括号的 GUID。"}},
    {"APersonComparedByCase",
     Redeclared("A03", "A00    varchar(36) collate nocase", "A00    varchar(36)"),
     {"表 A03，列 "
      "A00：比较文本时区分大小写，大小写不同的标识和代码对不上，排序也不对；请把这一列改为不区分大小写（colla"
      "te "
      "nocase）。"}},
    {"ATextComparedByCase",
     Redeclared("A03", "A0302  varchar(120) collate nocase", "A0302  varchar(120)"),
     {"表 A03，列 "
      "A0302：比较文本时区分大小写，大小写不同的标识和代码对不上，排序也不对；请把这一列改为不区分大小写（col"
      "late "
      "nocase）。"}},
    {"ACodeComparedByCase",
     Redeclared("LCCYJS", "dmhnd  varchar(30) collate nocase", "dmhnd  varchar(30)"),
     {"表 LCCYJS，列 "
      "dmhnd：比较文本时区分大小写，大小写不同的代码和拼音查不到；请把这一列改为不区分大小写（collate "
      "nocase）。"}},
    {"ASetComparedByCase",
     Redeclared("s_infotable", "tblname     varchar(10) collate nocase", "tblname     varchar(10)"),
     {"表 s_infotable，列 tblname：比较文本时区分大小写，写法不同的名称对不上，相应的内容读不出来；"
      "请把这一列改为不区分大小写（collate nocase）。"}},
    {"AMarkerComparedByCase",
     Redeclared("S_GUID", "val         varchar(10) collate nocase", "val         varchar(10)"),
     {"表 S_GUID，列 val：比较文本时区分大小写，新人员可能无法录入；请把这一列改为不区分大小写（collate "
      "nocase）。"}},
    {"ATableThatTakesNoRow",
     "create trigger t before insert on A12 begin select raise(abort,'不许'); end;",
     {"表 "
      "A12：不接受试写的一行（违反了数据库的约束：不许。），保存时可能同样失败；请检查表的约束和连接的权限"
      "。"}},
};

INSTANTIATE_TEST_SUITE_P(Check, Writing, testing::ValuesIn(kMutations), NameOf);

}  // namespace
}  // namespace dossierkit::tests
