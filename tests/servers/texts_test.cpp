// Texts on their way to a server and back.
#include <gtest/gtest.h>

#include <string>

#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

class Texts : public ::testing::Test {
 protected:
  // The text that `text` has become, once in a literal and once in a column.
  std::string ThereAndBack(const std::string& text) {
    const auto rows = connection_->Execute("select '" + text + "' as x from (" + one_row_ + ") t");
    return environment::TextOf(rows->Fields(0));
  }

  std::shared_ptr<odbc::OdbcConnection> connection_ = OpenServer(ServerOfThisRun());
  std::string one_row_ = ServerOfThisRun() == "postgresql"
                             ? "select datname from pg_database where datname='postgres'"
                             : "select user from user where user='dossierkit'";
};

// Every character but those of ASCII, 500 at a time.
TEST_F(Texts, EveryCharacterComesBack) {
  std::string text;
  int count = 0;
  for (char32_t c = 0x80; c <= 0x2FFFF; c += c < 0x10000 ? 1 : 64) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    text += environment::Encode(c);
    if (++count % 500 != 0) continue;
    ASSERT_EQ(ThereAndBack(text), text) << std::hex << static_cast<unsigned>(c);
    text.clear();
  }
}

TEST_F(Texts, ALongTextComesBackWhole) {
  for (const char* part : {"进", "省科学技术进步奖。", "a", "\xF0\xA0\xAE\xB7", "进\xF0\xA0\xAE\xB7"}) {
    for (const std::size_t times : {511U, 512U, 1022U, 1023U, 1024U, 1025U, 2046U, 2047U, 5000U}) {
      SCOPED_TRACE(part + (" " + std::to_string(times)));
      std::string text;
      for (std::size_t i = 0; i < times; ++i) text += part;
      ASSERT_TRUE(ThereAndBack(text) == text) << part << " " << times;
    }
  }
}

// PostgreSQL cuts a name at 63 bytes, 21 characters of Chinese, without a word.
TEST_F(Texts, AnAliasLongerThanTheServersNamesIsKeptWhole) {
  const std::string first = "候选人对所从事领域的现状和发展趋势的认识以及其他需要说明的情况（一）";
  const std::string second = "候选人对所从事领域的现状和发展趋势的认识以及其他需要说明的情况（二）";
  ASSERT_GT(first.size(), 90U);
  const auto rows = connection_->Execute("select '甲' as " + first + ",'乙' as " + second + " from (" +
                                         one_row_ + ") t order by " + second);
  EXPECT_EQ(rows->FieldName(0), first);
  EXPECT_EQ(rows->FieldName(1), second);
  EXPECT_EQ(environment::TextOf(rows->Fields(first)), "甲");
  EXPECT_EQ(environment::TextOf(rows->Fields(second)), "乙");
}

}  // namespace
}  // namespace dossierkit::tests
