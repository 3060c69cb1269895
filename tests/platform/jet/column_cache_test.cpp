// When an engine is asked for its tables.
#include "platform/jet/column_cache.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/environment/failure.h"
#include "tests/platform/jet/strict_renderer.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;

class ColumnCacheTest : public testing::Test {
 protected:
  std::string Translated(std::string_view statement) { return cache_.Translate(statement, {}).text; }
  int NumberOf(std::string_view statement) {
    try {
      Translated(statement);
    } catch (const environment::Failure& failure) {
      return failure.number();
    }
    return 0;
  }
  // What the engine was asked since the last time: v for its version, the names of tables.
  std::string Asked() { return std::exchange(asked_, {}); }

  ColumnKind kind_ = ColumnKind::kText;
  bool is_there_ = false;
  std::int64_t version_ = 1;
  std::string asked_;
  ColumnCache cache_{{[this] {
                        asked_ += "v ";
                        return version_;
                      },
                      [this](const std::string& table) {
                        asked_ += table + " ";
                        return table == "t" || (table == "u" && is_there_) ? TableColumns{{"A", kind_, false}}
                                                                           : TableColumns();
                      }}};
};

TEST_F(ColumnCacheTest, AnUpdateAsksForATableOnceAndNotForTheVersion) {
  EXPECT_EQ(Translated("update T set a='1990年3月'"), "update T set a='1990年3月'");
  EXPECT_EQ(Asked(), "v t ") << "and for that of the first columns";
  Translated("update t set A='x'");
  EXPECT_EQ(Asked(), "");
  Translated("select A from t");
  Translated("delete from t");
  EXPECT_EQ(Asked(), "") << "they store nothing";
}

TEST_F(ColumnCacheTest, AnInsertIsTranslatedByTheTableAsItIsDeclaredNow) {
  EXPECT_EQ(Translated("insert into t(a) values('1990年3月')"), "insert into t(a) values('1990年3月')");
  EXPECT_EQ(Asked(), "v t v ");
  Translated("insert into t(a) values('x')");
  EXPECT_EQ(Asked(), "v ");
  kind_ = ColumnKind::kDate;
  version_ = 2;
  EXPECT_EQ(Translated("insert into t(a) values('1990年3月')"), "insert into t(a) values('1990-03-01')");
  EXPECT_EQ(Asked(), "v t v ");
}

TEST_F(ColumnCacheTest, ASelectIsTranslatedByTheTablesAsTheyAreKnown) {
  const Renderer& strict = kStrictRenderer;
  const auto translated = [&] { return cache_.Translate("select A from t where A=1", strict).text; };
  const std::string as_text = translated();
  EXPECT_EQ(translated(), as_text);
  EXPECT_EQ(Asked(), "v t ");
  kind_ = ColumnKind::kInteger;
  version_ = 2;
  EXPECT_TRUE(cache_.ForgetOldSchema());
  Asked();
  const std::string as_number = translated();
  EXPECT_NE(as_number, as_text);
  EXPECT_EQ(Asked(), "t ");
  kind_ = ColumnKind::kText;
  cache_.Forget();
  EXPECT_EQ(translated(), as_text);
}

TEST_F(ColumnCacheTest, ASelectOfAMissingTableIsTranslatedByItOnceItIsThere) {
  const auto translated = [&] { return cache_.Translate("select A from u where A=1", kStrictRenderer).text; };
  const std::string without = translated();
  is_there_ = true;
  EXPECT_NE(translated(), without);
}

TEST_F(ColumnCacheTest, ManySelectsAreTranslatedEachByItself) {
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 1000; ++i) {
      const std::string number = std::to_string(i);
      ASSERT_EQ(Translated("select A from t where A='" + number + "'"),
                "select A from t where A='" + number + "'");
    }
  }
}

TEST_F(ColumnCacheTest, AConstantThatDoesNotFitIsTriedOnceMoreAfterAChange) {
  kind_ = ColumnKind::kInteger;
  EXPECT_EQ(NumberOf("update t set a='x'"), environment::kDataMismatch);
  EXPECT_EQ(Asked(), "v t v ");
  EXPECT_EQ(NumberOf("update t set a='x'"), environment::kDataMismatch);
  EXPECT_EQ(Asked(), "v ");
  kind_ = ColumnKind::kText;
  version_ = 2;
  EXPECT_EQ(Translated("update t set a='x'"), "update t set a='x'");
}

TEST_F(ColumnCacheTest, AWrongSyntaxAsksNothing) {
  EXPECT_EQ(NumberOf("update t set a='x', where a=1"), environment::kSyntaxError);
  EXPECT_EQ(NumberOf("insert into t(a) values('x'"), environment::kSyntaxError);
  EXPECT_EQ(Asked(), "v t ");
}

TEST_F(ColumnCacheTest, AnUnknownTableIsAskedForEachTime) {
  Translated("update u set a='x'");
  Translated("update u set a='x'");
  EXPECT_EQ(Asked(), "v u u ");
}

TEST_F(ColumnCacheTest, AnOldSchemaIsForgottenWholly) {
  Translated("update t set a='x'");
  EXPECT_FALSE(cache_.ForgetOldSchema());
  Asked();
  version_ = 7;
  EXPECT_TRUE(cache_.ForgetOldSchema());
  Translated("update t set a='x'");
  EXPECT_EQ(Asked(), "v t ");
}

TEST_F(ColumnCacheTest, WithoutColumnsNothingIsOld) {
  EXPECT_FALSE(cache_.ForgetOldSchema());
  Translated("update t set a='x'");
  cache_.Forget();
  version_ = 2;
  EXPECT_FALSE(cache_.ForgetOldSchema()) << "they are read by the version of then";
  Asked();
  Translated("update t set a='x'");
  EXPECT_EQ(Asked(), "v t ");
  EXPECT_FALSE(cache_.ForgetOldSchema());
}

TEST_F(ColumnCacheTest, AnEngineThatRefusesWrongValuesIsAskedForItsVersionBehindAFailureAlone) {
  ColumnCache cache({[this] {
                       asked_ += "v ";
                       return version_;
                     },
                     [this](const std::string& table) {
                       asked_ += table + " ";
                       return TableColumns{{"A", kind_, false}};
                     },
                     true});
  const auto translated = [&] { return cache.Translate("insert into t(a) values('1990年3月')", {}).text; };
  EXPECT_EQ(translated(), "insert into t(a) values('1990年3月')");
  EXPECT_EQ(translated(), "insert into t(a) values('1990年3月')");
  EXPECT_EQ(Asked(), "v t ");
  kind_ = ColumnKind::kDate;
  version_ = 2;
  EXPECT_EQ(translated(), "insert into t(a) values('1990年3月')") << "which the engine refuses";
  EXPECT_TRUE(cache.ForgetOldSchema());
  EXPECT_EQ(translated(), "insert into t(a) values('1990-03-01')");
  EXPECT_EQ(Asked(), "v t ");
  // What the host changes past the dialect is seen at once.
  kind_ = ColumnKind::kText;
  cache.Forget();
  EXPECT_EQ(translated(), "insert into t(a) values('1990年3月')");
}

}  // namespace
}  // namespace dossierkit::jet
