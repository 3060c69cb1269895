// A fresh copy of the sample in memory, one thing made wrong in it, and what the check says.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/check/check.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {

using Texts = std::vector<std::string>;

struct Mutation {
  const char* name;  // of the test
  std::string script;
  Texts faults;
};

inline void PrintTo(const Mutation& mutation, std::ostream* out) { *out << mutation.name; }

inline std::string NameOf(const testing::TestParamInfo<Mutation>& info) { return info.param.name; }

// A table declared anew, its rows as they are.
inline std::string Redeclared(const std::string& table, const std::string& part, const std::string& instead) {
  return "pragma writable_schema=1; update sqlite_master set sql=replace(sql,'" + part + "','" + instead +
         "') where name='" + table + "'; pragma writable_schema=reset;";
}

inline Texts TextsOf(const std::vector<check::Fault>& faults) {
  Texts texts;
  for (const check::Fault& fault : faults) texts.push_back(fault.text);
  return texts;
}

class Check : public testing::TestWithParam<Mutation> {
 protected:
  Texts Faults() { return TextsOf(check::CheckDatabase(*database)); }

  std::shared_ptr<Database> database = SampleDatabase();
};

}  // namespace dossierkit::tests
