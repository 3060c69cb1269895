#include "platform/ado/recordset.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/environment/failure.h"
#include "tests/support/failures.h"

namespace dossierkit::ado {
namespace {

using tests::NumberOfFailure;

using environment::DateTime;
using environment::Null;
using environment::Value;

// Names 一, 二, .. with a code in every second row.
Snapshot Rows(int count) {
  Snapshot rows;
  rows.AddColumn({"Name", ColumnKind::kText, {}});
  rows.AddColumn({"Code", ColumnKind::kText, {}});
  for (int i = 1; i <= count; ++i) {
    rows.AppendText("n" + std::to_string(i));
    if (i % 2 == 0) {
      rows.AppendText("c");
    } else if (i % 4 == 1) {
      rows.AppendText("");
    } else {
      rows.AppendNull();
    }
  }
  return rows;
}

class OneAnswer : public Connection {
 public:
  explicit OneAnswer(Snapshot rows) : rows_(std::move(rows)) {}
  bool IsOpen() const override { return true; }
  Snapshot Run(const std::string&) override { return rows_; }
  std::int32_t BeginTrans() override { return 1; }
  void CommitTrans() override {}
  void RollbackTrans() override {}

 private:
  Snapshot rows_;
};

class Listener {
 public:
  explicit Listener(Recordset& recordset)
      : will_(recordset.WillMove.Subscribe(
            [this](std::int32_t reason, std::int32_t& status, Recordset& source) {
              heard.push_back("will " + std::to_string(reason) + " at " +
                              std::to_string(source.AbsolutePosition()));
              if (cancels) status = kStatusCancel;
            })),
        done_(recordset.MoveComplete.Subscribe(
            [this](std::int32_t reason, std::int32_t& status, Recordset& source) {
              heard.push_back("done " + std::to_string(reason) + " status " + std::to_string(status) +
                              " at " + std::to_string(source.AbsolutePosition()));
            })) {}

  std::vector<std::string> Heard() { return std::exchange(heard, {}); }

  bool cancels = false;
  std::vector<std::string> heard;

 private:
  environment::Subscription will_;
  environment::Subscription done_;
};

using Heard = std::vector<std::string>;

TEST(Recordset, OpensOnTheFirstRowWithoutAWord) {
  OneAnswer connection(Rows(3));
  Recordset recordset;
  Listener listener(recordset);
  EXPECT_EQ(recordset.State(), kStateClosed);
  recordset.Open("select", connection);
  EXPECT_EQ(recordset.State(), kStateOpen);
  EXPECT_EQ(recordset.RecordCount(), 3);
  EXPECT_EQ(recordset.AbsolutePosition(), 1);
  EXPECT_EQ(recordset.Fields("NAME"), Value("n1"));
  recordset.Filter("code<>''");
  recordset.Close();
  EXPECT_EQ(listener.Heard(), Heard{});
}

TEST(Recordset, EmptyTextCannotBeOpened) {
  OneAnswer connection(Rows(1));
  Recordset recordset;
  try {
    recordset.Open("", connection);
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), 3001);
    EXPECT_EQ(failure.description(), "参数类型不正确，或不在可以接受的范围之内，或与其他参数冲突。");
  }
  EXPECT_EQ(recordset.State(), kStateClosed);
}

TEST(Recordset, FailedOpenLeavesItClosed) {
  UnopenedConnection connection;
  Recordset recordset;
  EXPECT_EQ(NumberOfFailure([&] { recordset.Open("select", connection); }), 3709);
  EXPECT_EQ(recordset.State(), kStateClosed);
}

TEST(Recordset, ClosedOneFailsWhateverIsAsked) {
  Recordset recordset;
  EXPECT_EQ(NumberOfFailure([&] { recordset.RecordCount(); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.MoveFirst(); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.MoveNext(); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.SetAbsolutePosition(1); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Fields(0); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Fields("x"); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Filter(""); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Close(); }), 3704);
  EXPECT_EQ(NumberOfFailure([&] { recordset.EOF_(); }), 3704);
}

TEST(Recordset, OpensAgainOnlyAfterClose) {
  OneAnswer connection(Rows(2));
  Recordset recordset(Rows(3));
  EXPECT_EQ(NumberOfFailure([&] { recordset.Open("select", connection); }), 3705);
  recordset.Close();
  recordset.Open("select", connection);
  EXPECT_EQ(recordset.RecordCount(), 2);
}

TEST(Recordset, WithoutRowsHasNoCurrentRow) {
  Recordset recordset(Rows(0));
  EXPECT_TRUE(recordset.BOF());
  EXPECT_TRUE(recordset.EOF_());
  EXPECT_EQ(recordset.AbsolutePosition(), -1);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Fields(0); }), 3021);
  EXPECT_EQ(NumberOfFailure([&] { recordset.MoveFirst(); }), 3021);
  EXPECT_EQ(NumberOfFailure([&] { recordset.MoveNext(); }), 3021);
  EXPECT_EQ(NumberOfFailure([&] { recordset.SetAbsolutePosition(1); }), 3001);
}

TEST(Recordset, WalksOverTheEndsAndNotBeyond) {
  Recordset recordset(Rows(2));
  recordset.MoveNext();
  EXPECT_EQ(recordset.Fields(0), Value("n2"));
  recordset.MoveNext();
  EXPECT_TRUE(recordset.EOF_());
  EXPECT_EQ(recordset.AbsolutePosition(), -3);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Fields(0); }), 3021);
  EXPECT_EQ(NumberOfFailure([&] { recordset.MoveNext(); }), 3021);
  recordset.MoveFirst();
  recordset.MovePrevious();
  EXPECT_TRUE(recordset.BOF());
  EXPECT_EQ(recordset.AbsolutePosition(), -2);
  EXPECT_EQ(NumberOfFailure([&] { recordset.MovePrevious(); }), 3021);
  recordset.MoveNext();
  EXPECT_EQ(recordset.AbsolutePosition(), 1);
}

TEST(Recordset, EveryMoveRaisesItsPairAlsoToTheSameRow) {
  Recordset recordset(Rows(2));
  Listener listener(recordset);
  recordset.MoveFirst();
  EXPECT_EQ(listener.Heard(), (Heard{"will 12 at 1", "done 12 status 1 at 1"}));
  recordset.MoveNext();
  EXPECT_EQ(listener.Heard(), (Heard{"will 13 at 1", "done 13 status 1 at 2"}));
  recordset.MovePrevious();
  EXPECT_EQ(listener.Heard(), (Heard{"will 14 at 2", "done 14 status 1 at 1"}));
  recordset.SetAbsolutePosition(1);
  EXPECT_EQ(listener.Heard(), (Heard{"will 10 at 1", "done 10 status 1 at 1"}));
}

TEST(Recordset, CancelledMoveStaysAndStillCompletes) {
  Recordset recordset(Rows(2));
  Listener listener(recordset);
  listener.cancels = true;
  recordset.MoveNext();
  EXPECT_EQ(listener.Heard(), (Heard{"will 13 at 1", "done 13 status 4 at 1"}));
  EXPECT_EQ(recordset.Fields(0), Value("n1"));
}

TEST(Recordset, MoveThatFailsRaisesNothing) {
  Recordset recordset(Rows(1));
  Listener listener(recordset);
  EXPECT_EQ(NumberOfFailure([&] { recordset.SetAbsolutePosition(2); }), 3001);
  EXPECT_EQ(NumberOfFailure([&] { recordset.SetAbsolutePosition(0); }), 3001);
  EXPECT_EQ(listener.Heard(), Heard{});
}

TEST(Recordset, SubscriberMayDropTheLastReference) {
  auto recordset = std::make_shared<Recordset>(Rows(2));
  const auto subscription =
      recordset->WillMove.Subscribe([&](std::int32_t, std::int32_t&, Recordset&) { recordset.reset(); });
  recordset->MoveNext();
  EXPECT_EQ(recordset, nullptr);
}

TEST(Recordset, SubscriberMayCloseIt) {
  Recordset recordset(Rows(2));
  const auto subscription =
      recordset.WillMove.Subscribe([](auto, auto&, Recordset& source) { source.Close(); });
  Listener listener(recordset);
  // The second subscriber still hears of it, and finds it closed.
  EXPECT_EQ(NumberOfFailure([&] { recordset.MoveNext(); }), 3704);
  EXPECT_EQ(recordset.State(), kStateClosed);
}

TEST(Recordset, FilterLeavesRowsWithText) {
  Recordset recordset(Rows(6));
  recordset.Filter("Code<>''");
  EXPECT_EQ(recordset.RecordCount(), 3);
  EXPECT_EQ(recordset.Fields("name"), Value("n2"));
  recordset.MoveNext();
  EXPECT_EQ(recordset.Fields("name"), Value("n4"));
  EXPECT_EQ(recordset.ValueAt(3, 0), Value("n6"));
  recordset.Filter("");
  EXPECT_EQ(recordset.RecordCount(), 6);
  EXPECT_EQ(recordset.AbsolutePosition(), 1);
}

TEST(Recordset, FilterOverEveryRowLeavesNone) {
  Recordset recordset(Rows(1));
  recordset.Filter(" code <> '' ");
  EXPECT_EQ(recordset.RecordCount(), 0);
  EXPECT_TRUE(recordset.EOF_());
}

TEST(Recordset, OtherFiltersAreRefused) {
  Recordset recordset(Rows(2));
  for (const char* filter : {"code='x'", "<>''", "code<>'x'", "code<>'' or name<>''", "code"}) {
    EXPECT_EQ(NumberOfFailure([&] { recordset.Filter(filter); }), 3001) << filter;
  }
  EXPECT_EQ(NumberOfFailure([&] { recordset.Filter("other<>''"); }), 3265);
  EXPECT_EQ(recordset.RecordCount(), 2);
}

TEST(Recordset, UnknownColumnIsTold) {
  Recordset recordset(Rows(1));
  EXPECT_EQ(NumberOfFailure([&] { recordset.Fields("nothing"); }), 3265);
  EXPECT_EQ(NumberOfFailure([&] { recordset.Fields(2); }), 3265);
  EXPECT_EQ(NumberOfFailure([&] { recordset.FieldName(2); }), 3265);
  EXPECT_EQ(NumberOfFailure([&] { recordset.ValueAt(1, 2); }), 3265);
  EXPECT_EQ(NumberOfFailure([&] { recordset.ValueAt(2, 0); }), 3021);
  EXPECT_EQ(recordset.FieldName(1), "Code");
  EXPECT_EQ(recordset.FieldCount(), 2U);
}

TEST(Recordset, WithoutColumnsIsClosed) { EXPECT_EQ(Recordset(Snapshot()).State(), kStateClosed); }

TEST(Snapshot, GivesEachCellByTheKindOfItsColumn) {
  Snapshot rows;
  rows.AddColumn({"b", ColumnKind::kBoolean, {}});
  rows.AddColumn({"d", ColumnKind::kDate, {}});
  rows.AddColumn({"f", ColumnKind::kDate, "yyyy年mm月"});
  rows.AddColumn({"n", ColumnKind::kFloating, {}});
  rows.AddColumn({"t", ColumnKind::kText, {}});
  rows.AppendInteger(-1);
  rows.AppendText("1990-03-05");
  rows.AppendText("1990-03-01");
  rows.AppendFloating(2.5);
  rows.AppendText("a\xFF");
  rows.AppendNull();
  rows.AppendText("no date");
  rows.AppendNull();
  rows.AppendInteger(7);
  rows.AppendText("");
  EXPECT_EQ(rows.RowCount(), 2U);
  EXPECT_EQ(rows.ValueAt(0, 0), Value(true));
  EXPECT_EQ(rows.ValueAt(0, 1), Value(DateTime{1990, 3, 5}));
  EXPECT_EQ(rows.ValueAt(0, 2), Value("1990年03月"));
  EXPECT_EQ(rows.ValueAt(0, 3), Value(2.5));
  EXPECT_EQ(rows.ValueAt(0, 4), Value("a\xEF\xBF\xBD"));
  EXPECT_EQ(rows.ValueAt(1, 0), Value(Null{}));
  EXPECT_EQ(rows.ValueAt(1, 1), Value("no date"));
  EXPECT_EQ(rows.ValueAt(1, 2), Value(""));
  EXPECT_EQ(rows.ValueAt(1, 3), Value(7));
  EXPECT_EQ(rows.ValueAt(1, 4), Value(""));
  EXPECT_EQ(rows.FindColumn("T"), 4);
  EXPECT_EQ(rows.FindColumn("x"), -1);
}

}  // namespace
}  // namespace dossierkit::ado
