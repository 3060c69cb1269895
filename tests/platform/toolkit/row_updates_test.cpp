#include "platform/toolkit/controls/row_updates.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace dossierkit::toolkit {
namespace {

using Log = std::vector<std::string>;

class RowUpdatesTest : public testing::Test, public RowUpdates::Rows {
 protected:
  void Drop() override { log.emplace_back("drop"); }
  void Fill() override { log.emplace_back("fill"); }
  void Compare() override { log.emplace_back("compare"); }
  void CallWhenIdle() override { log.emplace_back("call"); }
  Log TakeLog() { return std::exchange(log, {}); }

  Log log;
  RowUpdates updates{*this};
};

// A view that shows its first rows already.
class FilledRowUpdates : public RowUpdatesTest {
 protected:
  void SetUp() override {
    updates.Content();
    log.clear();
  }
};

TEST_F(RowUpdatesTest, TheFirstRowsShowAtOnce) {
  updates.Content();
  EXPECT_EQ(TakeLog(), (Log{"drop", "fill", "compare"}));
  updates.Settle();
  EXPECT_EQ(TakeLog(), Log{});
}

TEST_F(RowUpdatesTest, AChoiceBeforeTheFirstRowsWaitsForThem) {
  updates.Selection();
  EXPECT_EQ(TakeLog(), Log{});
}

TEST_F(FilledRowUpdates, RowsThatComeOneByOneAreDroppedOnceAndTakenOverTogetherWhenTheSystemIsIdle) {
  for (int i = 0; i < 3; ++i) updates.Content();
  EXPECT_EQ(TakeLog(), (Log{"drop", "call"}));
  updates.Idle();
  EXPECT_EQ(TakeLog(), (Log{"fill", "compare"}));
  updates.Idle();
  EXPECT_EQ(TakeLog(), Log{}) << "nothing waits any more";
}

TEST_F(FilledRowUpdates, TheEndOfAReportIsNotWaitedBeyond) {
  updates.Content();
  log.clear();
  updates.Settle();
  EXPECT_EQ(TakeLog(), (Log{"fill", "compare"}));
  updates.Idle();
  EXPECT_EQ(TakeLog(), Log{}) << "the call that was asked for comes too late";
}

TEST_F(FilledRowUpdates, AChoiceShowsAtOnceButNotWhileItsRowIsMissing) {
  updates.Selection();
  EXPECT_EQ(TakeLog(), (Log{"compare"}));
  updates.Content();
  log.clear();
  updates.Selection();
  EXPECT_EQ(TakeLog(), Log{});
}

TEST_F(FilledRowUpdates, ManyNodesThatOpenAreComparedOnce) {
  for (int i = 0; i < 3; ++i) updates.Later();
  EXPECT_EQ(TakeLog(), (Log{"call"}));
  updates.Idle();
  EXPECT_EQ(TakeLog(), (Log{"compare"}));
}

TEST_F(FilledRowUpdates, WhatComesBehindACallAsksForAnother) {
  updates.Content();
  updates.Idle();
  log.clear();
  updates.Content();
  EXPECT_EQ(TakeLog(), (Log{"drop", "call"}));
}

TEST_F(FilledRowUpdates, NowShowsAlsoWhatDoesNotWait) {
  updates.Now();
  EXPECT_EQ(TakeLog(), (Log{"compare"}));
}

}  // namespace
}  // namespace dossierkit::toolkit
