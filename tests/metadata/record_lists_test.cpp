// What each field adds to the statement that Save writes.
#include "metadata/record_lists.h"

#include <gtest/gtest.h>

#include "tests/metadata/scratch_page.h"

namespace dossierkit::tests {
namespace {

cFieldItem Coded(const std::string& type, const environment::Value& code) {
  cFieldItem item = FieldOf("A0102", type);
  item.CodeTable = "GB2261";
  item.Dmcod = code;
  item.Dmcpt = "男性";
  return item;
}

// What a field adds to an insert, as "columns|values", and to an update.
struct Added {
  std::string insert;
  std::string update;
};

template <typename Add>
Added AddedBy(const Add& add) {
  RecordLists insert("C", "V");
  add(insert);
  RecordLists update;
  add(update);
  EXPECT_EQ(insert.Assignments(), "");
  EXPECT_EQ(update.Columns() + update.Values(), "");
  return {insert.Columns() + "|" + insert.Values(), update.Assignments()};
}

void ExpectText(const cFieldItem& item, const std::string& text, const Added& expected) {
  const Added added = AddedBy([&](RecordLists& lists) { lists.AddText(item, text); });
  EXPECT_EQ(added.insert, expected.insert) << item.FieldType << " '" << text << "'";
  EXPECT_EQ(added.update, expected.update) << item.FieldType << " '" << text << "'";
}

void ExpectMasked(const cFieldItem& item, const std::string& mask, const std::string& text,
                  const Added& expected) {
  const auto box = MaskedBox(mask, text);
  const Added added = AddedBy([&](RecordLists& lists) { lists.AddMasked(item, *box); });
  EXPECT_EQ(added.insert, expected.insert) << item.FieldType << " '" << text << "'";
  EXPECT_EQ(added.update, expected.update) << item.FieldType << " '" << text << "'";
}

const Added kNothing = {"C|V", ""};

TEST(RecordLists, AVarcharAddsItsTextAlways) {
  for (const char* type : {"varchar", "Varchar", "VARCHAR"}) {
    ExpectText(FieldOf("A0101", type), "张三", {"C,A0101|V,'张三'", "A0101 = '张三'"});
    ExpectText(FieldOf("A0101", type), "", {"C,A0101|V,''", "A0101 = ''"});
    ExpectText(FieldOf("A0101", type), " a ", {"C,A0101|V,' a '", "A0101 = ' a '"});
  }
}

TEST(RecordLists, ACodedVarcharAddsItsCodeAndNotWhatItShows) {
  ExpectText(Coded("Varchar", "1"), "男性", {"C,A0102|V,'1'", "A0102 = '1'"});
  ExpectText(Coded("varchar", "1"), "", {"C,A0102|V,'1'", "A0102 = '1'"});
  ExpectText(Coded("varchar", ""), "x", {"C,A0102|V,''", "A0102 = ''"});
  ExpectText(Coded("varchar", std::int64_t{7}), "x", {"C,A0102|V,'7'", "A0102 = '7'"});
}

TEST(RecordLists, AnUnsetCodeAddsAnEmptyText) {
  ExpectText(Coded("varchar", environment::Value()), "男性", {"C,A0102|V,''", "A0102 = ''"});
}

TEST(RecordLists, AnIntAddsItsTextAsTyped) {
  for (const char* type : {"int", "Int"}) {
    ExpectText(FieldOf("A1301", type), "12", {"C,A1301|V,'12'", "A1301 = '12'"});
    ExpectText(FieldOf("A1301", type), " 12.60", {"C,A1301|V,' 12.60'", "A1301 = ' 12.60'"});
  }
}

TEST(RecordLists, RequiredAClearedIntAddsNothing) {
  for (const char* type : {"int", "Int"}) ExpectText(FieldOf("A1301", type), "", kNothing);
}

TEST(RecordLists, ADatetimeAddsItsTextOrIsCleared) {
  for (const char* type : {"datetime", "Datetime"}) {
    ExpectText(FieldOf("A0104", type), "1990年03月", {"C,A0104|V,'1990年03月'", "A0104 = '1990年03月'"});
    ExpectText(FieldOf("A0104", type), "", {"C|V", "A0104 = null"});
  }
}

TEST(RecordLists, LongTextsAndBitsAddTheirTextAlways) {
  for (const char* type : {"ntext", "Ntext", "bit", "Bit"}) {
    ExpectText(FieldOf("A1201", type), "x", {"C,A1201|V,'x'", "A1201 = 'x'"});
    ExpectText(FieldOf("A1201", type), "", {"C,A1201|V,''", "A1201 = ''"});
  }
}

TEST(RecordLists, RequiredOnlyACodedVarcharAddsItsCode) {
  ExpectText(Coded("int", "1"), "5", {"C,A0102|V,'5'", "A0102 = '5'"});
  ExpectText(Coded("ntext", "1"), "x", {"C,A0102|V,'x'", "A0102 = 'x'"});
  ExpectMasked(Coded("varchar", "1"), "##", "05", {"C,A0102|V,'05'", "A0102 = '05'"});
}

TEST(RecordLists, AnotherTypeAddsNothing) {
  for (const char* type : {"money", "text", "varchar2", ""}) {
    ExpectText(FieldOf("A0101", type), "x", kNothing);
    ExpectText(FieldOf("A0101", type), "", kNothing);
  }
}

TEST(RecordLists, AMaskedVarcharAddsItsTextOrTwoQuotes) {
  for (const char* type : {"varchar", "Varchar"}) {
    ExpectMasked(FieldOf("A0117", type), "######", "210000", {"C,A0117|V,'210000'", "A0117 = '210000'"});
    ExpectMasked(FieldOf("A0117", type), "######", "", {"C,A0117|V,''", "A0117 = ''"});
    ExpectMasked(FieldOf("A0117", type), "######", "21____", {"C,A0117|V,'21____'", "A0117 = '21____'"});
  }
}

TEST(RecordLists, AMaskedDateAddsItsTextWithTheMaskOrIsCleared) {
  for (const char* type : {"datetime", "Datetime"}) {
    ExpectMasked(FieldOf("A0104", type), "####年##月##日", "1990年03月12日",
                 {"C,A0104|V,'1990年03月12日'", "A0104 = '1990年03月12日'"});
    ExpectMasked(FieldOf("A0104", type), "####年##月##日", "", {"C|V", "A0104 = null"});
  }
}

TEST(RecordLists, RequiredAMaskedFieldOfAnotherTypeAddsNothing) {
  for (const char* type : {"int", "ntext", "bit", "money", ""}) {
    ExpectMasked(FieldOf("A1301", type), "####", "1990", kNothing);
    ExpectMasked(FieldOf("A1301", type), "####", "", kNothing);
  }
}

TEST(RecordLists, NothingIsEscaped) {
  ExpectText(FieldOf("A0101", "varchar"), "O'Neil", {"C,A0101|V,'O'Neil'", "A0101 = 'O'Neil'"});
}

TEST(RecordLists, PiecesAreSeparatedByACommaWithoutABlank) {
  RecordLists update;
  update.AddText(FieldOf("A0101", "varchar"), "a");
  update.AddText(FieldOf("A0104", "datetime"), "");
  update.AddMasked(FieldOf("A0117", "varchar"), *MaskedBox("######"));
  EXPECT_EQ(update.Assignments(), "A0101 = 'a',A0104 = null,A0117 = ''");
}

}  // namespace
}  // namespace dossierkit::tests
