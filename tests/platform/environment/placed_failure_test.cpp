#include "platform/environment/placed_failure.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace dossierkit::environment {
namespace {

// The failure that leaves `body`.
template <typename Body>
PlacedFailure PlacedFrom(const Body& body) {
  try {
    body();
  } catch (const PlacedFailure& failure) {
    return failure;
  }
  ADD_FAILURE() << "no placed failure";
  return PlacedFailure(MakeFailure(kInvalidCall));
}

TEST(PlacedFailures, KeepNumberWordsAndStatement) {
  const auto failure =
      PlacedFrom([] { At({.set = "A03"}, [] { throw MakeFailure(kTypeMismatch, "select 1"); }); });
  EXPECT_EQ(failure.number(), kTypeMismatch);
  EXPECT_STREQ(failure.what(), "类型不匹配");
  EXPECT_EQ(failure.statement(), "select 1");
  EXPECT_EQ(failure.place().statement, "select 1");
}

TEST(PlacedFailures, TakeWhatTheNearestLayerKnows) {
  const auto failure = PlacedFrom([] {
    At({"A02", "A0201", "打开信息集", "outer"},
       [] { At({.set = "A03", .doing = "读取字段的定义"}, [] { throw MakeFailure(kOverflow); }); });
  });
  EXPECT_EQ(failure.place().set, "A03");
  EXPECT_EQ(failure.place().field, "A0201");
  EXPECT_EQ(failure.place().doing, "读取字段的定义");
  EXPECT_EQ(failure.place().statement, "outer");
}

TEST(PlacedFailures, AreMadeOfFailuresAlone) {
  EXPECT_THROW(At({.set = "A03"}, [] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_EQ(At({.set = "A03"}, [] { return 5; }), 5);
}

TEST(PlacedFailures, TellTheirDetailsInLines) {
  PlacedFailure failure(MakeFailure(kTypeMismatch));
  EXPECT_EQ(DetailsOf(failure), "错误 13：类型不匹配");
  failure.Add({"A03", "A0302", "填写页面", "select 1"});
  EXPECT_EQ(DetailsOf(failure),
            "错误 13：类型不匹配\n信息集：A03\n字段：A0302\n正在：填写页面\n语句：select 1");
  EXPECT_EQ(DetailsOf(MakeFailure(kOverflow, "select 2")), "错误 6：溢出\n语句：select 2");
}

}  // namespace
}  // namespace dossierkit::environment
