// Rules that the sample keeps and a host's database need not: see data/README.md.
#include "platform/environment/text.h"
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

using environment::Replace;

class SampleRules : public Check {
 protected:
  // The rows of a query in the engine's own words, @C, @T and the like replaced.
  Texts Found(std::string query, const std::vector<std::pair<std::string, std::string>>& names = {}) {
    for (const auto& [name, value] : names) query = Replace(query, name, value);
    database->RunScript("drop view if exists found; create view found as " + query);
    ++queries_;
    return Column(*database, "select * from found");
  }
  void ExpectNone(const std::string& query,
                  const std::vector<std::pair<std::string, std::string>>& names = {}) {
    EXPECT_EQ(Found(query, names), Texts{}) << query;
  }
  // The rows of the metadata that a query in the engine's own words gives, cut at the bars.
  std::vector<Texts> Cut(const std::string& query) {
    std::vector<Texts> rows;
    for (const std::string& row : Found(query)) rows.push_back(environment::Split(row + "|", "|"));
    return rows;
  }
  int queries_ = 0;
};

TEST_F(SampleRules, LabelsAreBareNamesAndEveryFieldIsExplained) {
  ExpectNone(
      "with recursive x(i, d, p) as (select itemname, itemdesc, 1 from s_infoitem union all "
      "select i, d, p + 1 from x where p < length(d)) select i from x "
      "where not (unicode(substr(d, p, 1)) between 0x4e00 and 0x9fff or substr(d, p, 1) glob '[A-Za-z]' "
      "or (substr(d, p, 1) glob '[0-9]' and p > 1))");
  ExpectNone(
      "select itemname from s_infoitem where ifnull(trim(FldExplain), '') = '' or instr(FldExplain, '''') "
      "or instr(FldExplain, '\"')");
  ExpectNone(
      "select tblname from s_infoitem group by tblname, FldOrder having count(*) > 1 or FldOrder is null");
  ExpectNone("select dmgrp from s_CodeLevDefine where dmgrp not in (select dmgrp from s_CodeTableDefine)");
  ExpectNone(
      "select itemname from s_infoitem where CodeTable is not null and (FieldType <> 'Varchar' or style is "
      "not "
      "null or \"Check\" is not null)");
}

TEST_F(SampleRules, CodesAndCaptionsArePlain) {
  for (const std::string& table : Column(*database, "select dmgrp from s_CodeTableDefine")) {
    ExpectNone(
        "select dmcod from @K where ifnull(dmcod, '') = '' or dmcod glob '*[^0-9A-Za-z]*' or ifnull(dmcpt, "
        "'') = '' "
        "or instr(dmcpt, '''') or instr(dmcpt, '\"') or dmcpt <> trim(dmcpt) or ifnull(dmhnd, '') = '' or "
        "dmhnd "
        "glob '*[^0-9a-z]*'",
        {{"@K", table}});
  }
}

TEST_F(SampleRules, EverySetHoldsKnownPersonsInTheOrderOfItsList) {
  for (const Texts& set :
       Cut("select tblname || '|' || Property || '|' || ifnull(orderfield, tblname || '99') || "
           "'|' || ifnull(maxnumber, 1000) from s_infotable")) {
    ExpectNone(
        "select A00 from @T where A00 is null or length(A00) <> 36 or A00 glob '*[^0-9A-F-]*' or substr(A00, "
        "9, 1) || substr(A00, 14, 1) "
        "|| substr(A00, 19, 1) || substr(A00, 24, 1) <> '----' or A00 not in (select A00 from A01)",
        {{"@T", set[0]}});
    if (set[1] == "1") continue;
    ExpectNone(
        "select A00 from (select A00, @T99 n, row_number() over (partition by A00 order by @O, @T99) r from "
        "@T) where n <> r",
        {{"@T", set[0]}, {"@O", set[2]}});
    ExpectNone("select A00 from @T group by A00 having count(*) > @X", {{"@T", set[0]}, {"@X", set[3]}});
  }
}

TEST_F(SampleRules, EveryFieldHoldsWhatItsMetadataAllow) {
  const auto fields =
      Cut("select tblname || '|' || itemname || '|' || FieldType || '|' || ifnull(FieldLength, 0) || '|' || "
          "ifnull(CodeTable, '') || '|' || ifnull(style, '') || '|' || ifnull(\"Check\", '') || '|' || "
          "\"IsNUll\" "
          "from s_infoitem where itemname <> tblname || '99'");
  ASSERT_EQ(fields.size(), 100U);
  for (const Texts& field : fields) {
    const std::vector<std::pair<std::string, std::string>> names = {{"@T", field[0]}, {"@C", field[1]},
                                                                    {"@L", field[3]}, {"@K", field[4]},
                                                                    {"@S", field[5]}, {"@R", field[6]}};
    if (field[2] == "Varchar" || field[2] == "Ntext") {
      ExpectNone(
          "select A00 from @T where @C is null or length(@C) > @L or instr(@C, '''') or instr(@C, '\"') or "
          "@C "
          "<> trim(@C) or instr(replace(@C, char(13, 10), ''), char(13)) or instr(replace(@C, char(13, 10), "
          "''), char(10))",
          names);
    }
    if (!field[4].empty()) {
      ExpectNone(
          "select A00 from @T t where @C <> '' and (select count(*) from @K where dmattr = 1 and (dmcod = @C "
          "or "
          "dmcpt = @C or dmhnd = @C)) <> 1",
          names);
      ExpectNone(
          "select A00 from @T join @K k on k.dmcod = @C where (select count(*) from @K p where dmattr = 1 "
          "and "
          "(p.dmcod = k.dmcpt or p.dmcpt = k.dmcpt or p.dmhnd = k.dmcpt)) <> 1",
          names);
    }
    if (field[2] == "datetime") {
      ExpectNone(
          "select A00 from @T where @C is not null and (typeof(@C) <> 'text' or date(@C) is not @C or @C < "
          "'1900-01-01' or @C > date('now', 'localtime') or ('@S' = 'yyyy-mm' and @C not like '%-01'))",
          names);
      ExpectNone(
          "select x.A00 from @T x join A01 p on p.A00 = x.A00 where '@C' <> 'A0104' and x.@C <= p.A0104",
          names);
    }
    if (field[7] == "0") ExpectNone("select A00 from @T where ifnull(@C, '') = ''", names);
    if (field[6].starts_with("L ")) {
      ExpectNone(
          "select A00 from @T where @C <> '' and instr(',' || substr('@R', 3) || ',', ',' || length(@C) || "
          "',') = 0",
          names);
    }
    if (field[6].starts_with("B ")) {
      ExpectNone(
          "select A00 from @T where @C is not null and substr(@C, 1, length('@S')) < substr('@R', 3, "
          "length('@S'))",
          names);
    }
  }
  EXPECT_GT(queries_, 150);
}

TEST_F(SampleRules, PersonsHaveTheirTypesNumbersAndIdentityNumbers) {
  ExpectNone(
      "select A00 from A01 where ifnull(A0136, 0) not in (1, 2, 3) or ifnull(A0199, 0) not between 1 and 12");
  ExpectNone("select A0199 from A01 group by A0199 having count(*) > 1");
  ExpectNone(
      "select A0131 from A01 where A0131 not glob '[1-9]' || replace(hex(zeroblob(7)), '00', '[0-9][0-9]') "
      "and "
      "A0131 not glob '[1-9]' || replace(hex(zeroblob(8)), '00', '[0-9][0-9]') || '[0-9X]'");
  ExpectNone(
      "select A0131 from A01 where case length(A0131) when 15 then '19' || substr(A0131, 7, 6) else "
      "substr(A0131, 7, 8) end <> replace(A0104, '-', '') or substr(A0131, 1, 6) <> A0114");
  ExpectNone(
      "select A0131 from A01 where 2 - substr(A0131, iif(length(A0131) = 15, 15, 17), 1) % 2 <> A0102 + 0");
  ExpectNone(
      "with recursive k(i, w) as (select 17, 2 union all select i - 1, w * 2 % 11 from k where i > 1) select "
      "A0131 from A01 where length(A0131) = 18 and substr(A0131, 18) <> (select substr('10X98765432', 1 + "
      "sum(substr(A0131, i, 1) * w) % 11, 1) from k)");
}

TEST_F(SampleRules, PeriodsAndYearsRunForwards) {
  for (const auto& [set, from, to] :
       std::vector<std::tuple<std::string, std::string, std::string>>{{"A02", "A0201", "A0201A"},
                                                                      {"A03", "A0301", "A0301A"},
                                                                      {"A04", "A0401", "A0402"},
                                                                      {"A05", "A0501", "A0502"}})
    ExpectNone("select A00 from " + set + " where " + to + " < " + from);
  ExpectNone(
      "select A00 from A01, (select strftime('%Y', 'now', 'localtime') y) where A0127 > y or A0128 > y or "
      "A0129 "
      "> y");
  for (const auto& [set, year] :
       std::vector<std::pair<std::string, std::string>>{{"A09", "A0907"}, {"A10", "A1002"}, {"A11", "A1102"}})
    ExpectNone("select A00 from " + set + " where " + year + " > strftime('%Y', 'now', 'localtime') or " +
               year + " < '1900'");
}

}  // namespace
}  // namespace dossierkit::tests
