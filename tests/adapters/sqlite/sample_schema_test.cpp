// The schema of the sample, on which the host's own tables are modelled.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "tests/support/memory_database.h"
#include "tests/support/paths.h"

namespace dossierkit::sqlite {
namespace {

using Texts = std::vector<std::string>;

const Texts kSetsOfManyRecords{"A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A15", "A21"};
const Texts kSetsOfOneRecord{"A12", "A13", "A14", "B01"};

class SampleSchema : public testing::Test {
 protected:
  SampleSchema() {
    std::ostringstream bytes;
    bytes << std::ifstream(tests::SampleDatabaseFile(), std::ios::binary).rdbuf();
    sample_ = tests::OpenInMemory(bytes.str());
  }

  Texts Column(const std::string& query) {
    Texts values;
    const auto rows = sample_->Execute(query);
    for (std::int32_t row = 1; row <= rows->RecordCount(); ++row)
      values.push_back(environment::TextOf(rows->ValueAt(row, 0)));
    return values;
  }
  std::string One(const std::string& query) {
    return environment::TextOf(sample_->Execute(query)->Fields(0));
  }
  Texts CodeTables() { return Column("select dmgrp from s_CodeTableDefine order by dmgrp"); }

  // The columns of a table's indexes, each as "A00,A0299".
  std::set<std::string> Indexes(const std::string& table) {
    std::set<std::string> indexes;
    for (const std::string& index :
         Column("select name from sqlite_master where type='index' and tbl_name='" + table + "'")) {
      std::string columns;
      for (int i = 0; i < 4; ++i) {
        sample_->RunScript(
            "drop view if exists one_name; create view one_name as select coalesce(name, 'length') as name "
            "from "
            "pragma_index_info('" +
            index + "') where seqno=" + std::to_string(i));
        for (const std::string& name : Column("select name from one_name"))
          columns += (i > 0 ? "," : "") + name;
      }
      indexes.insert(columns);
    }
    return indexes;
  }

  std::shared_ptr<SqliteConnection> sample_;
};

TEST_F(SampleSchema, WithTheLastRowOfAPersonHisRowsInEverySetGo) {
  Texts sets = kSetsOfManyRecords;
  sets.insert(sets.end(), kSetsOfOneRecord.begin(), kSetsOfOneRecord.end());
  sample_->Run("insert into A01(A00) values('P')");
  sample_->Run("insert into A01(A00) values('p')");
  sample_->Run("insert into A01(A00) values('Q')");
  for (const std::string& set : sets) {
    sample_->Run("insert into " + set + "(A00) values('P')");
    sample_->Run("insert into " + set + "(A00) values('Q')");
  }
  sample_->RunScript("delete from A01 where rowid = (select max(rowid) from A01 where A00='P')");
  for (const std::string& set : sets)
    EXPECT_EQ(One("select count(*) from " + set + " where A00='P'"), "1")
        << set << ", one row of his is left";
  sample_->Run("delete from A01 where A00='P'");
  for (const std::string& set : sets) {
    EXPECT_EQ(One("select count(*) from " + set + " where A00='P'"), "0") << set;
    EXPECT_EQ(One("select count(*) from " + set + " where A00='Q'"), "1") << set;
  }
}

TEST_F(SampleSchema, EverySetHasTheIndexOfItsStatements) {
  EXPECT_EQ(Indexes("A01"), (std::set<std::string>{"A00", "A0199"}));
  for (const std::string& set : kSetsOfManyRecords)
    EXPECT_EQ(Indexes(set), std::set<std::string>{"A00," + set + "99"}) << set;
  for (const std::string& set : kSetsOfOneRecord)
    EXPECT_EQ(Indexes(set), std::set<std::string>{"A00"}) << set;
}

TEST_F(SampleSchema, EveryCodeTableHasTheIndexesOfItsStatements) {
  ASSERT_GE(CodeTables().size(), 15U);
  for (const std::string& table : CodeTables())
    EXPECT_EQ(Indexes(table), (std::set<std::string>{"dmcod", "dmcpt", "dmhnd", "length,dmcod,dmcpt,dmattr"}))
        << table;
  EXPECT_EQ(Indexes("s_infotable"), std::set<std::string>{"tblname"});
  EXPECT_EQ(Indexes("s_infoitem"), std::set<std::string>{"tblname"});
  EXPECT_EQ(Indexes("s_CodeTableDefine"), std::set<std::string>{"dmgrp"});
  EXPECT_EQ(Indexes("s_CodeLevDefine"), std::set<std::string>{"dmgrp"});
}

TEST_F(SampleSchema, EveryTextIsComparedWithoutRegardToCase) {
  const Texts tables = Column("select name from sqlite_master where type='table'");
  EXPECT_EQ(tables.size(), 21U + CodeTables().size());
  int texts = 0;
  for (const std::string& table : tables) {
    sample_->RunScript(
        "drop view if exists columns; create view columns as select name from "
        "pragma_table_info('" +
        table + "') where lower(type) like '%char%' or lower(type) like '%text%'");
    const Texts columns = Column("select name from columns");
    sample_->RunScript("delete from " + table);
    for (const std::string& column : columns) {
      ++texts;
      const std::string property = table == "s_infotable" ? ",Property" : "";
      const std::string zero = property.empty() ? "" : ",0";
      sample_->RunScript("insert into " + table + "(\"" + column + "\"" + property + ") values('aB'" + zero +
                         ")");
      EXPECT_EQ(One("select count(*) from " + table + " where [" + column + "]='Ab'"), "1")
          << table << "." << column;
    }
  }
  EXPECT_GT(texts, 150);
}

}  // namespace
}  // namespace dossierkit::sqlite
