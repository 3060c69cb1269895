// Transactions of every engine; a part of conformance.h.
#pragma once

#include "tests/adapters/conformance_fixture.h"

namespace dossierkit::conformance {

TEST_F(Conformance, CommittedStatementsStay) {
  EXPECT_EQ(connection_->BeginTrans(), 1);
  Run("insert into A01(A00,A0199) values('P','1')");
  Run("update A01 set A0101='王一' where A00='P'");
  EXPECT_EQ(One("select A0101 from A01"), Value("王一")) << "seen inside the transaction";
  connection_->CommitTrans();
  EXPECT_EQ(One("select A0101 from A01"), Value("王一"));
  EXPECT_EQ(connection_->BeginTrans(), 1) << "the first one has ended";
  connection_->RollbackTrans();
}

TEST_F(Conformance, RolledBackStatementsAreUndone) {
  Run("insert into A01(A00,A0101,A0199) values('P','王一','1')");
  connection_->BeginTrans();
  Run("update A01 set A0101='王二' where A00='P'");
  Run("insert into A01(A00,A0199) values('Q','2')");
  Run("delete from A01 where A00='P'");
  connection_->RollbackTrans();
  EXPECT_EQ(List("select A0101 from A01"), "王一");
  Run("update A01 set A0101='王三' where A00='P'");
  EXPECT_EQ(List("select A0101 from A01"), "王三") << "each statement stands for itself again";
}

TEST_F(Conformance, TransactionsNest) {
  EXPECT_EQ(connection_->BeginTrans(), 1);
  Run("insert into A01(A00) values('1')");
  EXPECT_EQ(connection_->BeginTrans(), 2);
  Run("insert into A01(A00) values('2')");
  EXPECT_EQ(connection_->BeginTrans(), 3);
  Run("insert into A01(A00) values('3')");
  connection_->RollbackTrans();
  EXPECT_EQ(connection_->BeginTrans(), 3);
  Run("insert into A01(A00) values('4')");
  connection_->CommitTrans();
  connection_->CommitTrans();
  EXPECT_EQ(List("select A00 from A01 order by A00"), "1,2,4");
  connection_->RollbackTrans();
  EXPECT_EQ(List("select A00 from A01 order by A00"), "") << "the outermost one decides";
}

TEST_F(Conformance, ARolledBackLevelIsGone) {
  connection_->BeginTrans();
  connection_->BeginTrans();
  Run("insert into A01(A00) values('1')");
  connection_->BeginTrans();
  Run("insert into A01(A00) values('2')");
  connection_->RollbackTrans();
  Run("insert into A01(A00) values('3')");
  connection_->RollbackTrans();
  EXPECT_EQ(List("select A00 from A01"), "") << "the second level began before the first record";
  connection_->CommitTrans();
}

TEST_F(Conformance, AFailedStatementLeavesTheRestOfItsTransaction) {
  connection_->BeginTrans();
  Run("insert into A01(A00,A0199) values('P','1')");
  EXPECT_EQ(FailureOf("insert into A01(A00,A0199) values('Q','x')").number(), environment::kDataMismatch);
  Run("update A01 set A0101='王一'");
  connection_->CommitTrans();
  EXPECT_EQ(List("select A0101 from A01"), "王一");
}

TEST_F(Conformance, WithoutATransactionNothingIsCommittedOrRolledBack) {
  const auto told = [](auto call) {
    try {
      call();
    } catch (const environment::Failure& failure) {
      return std::to_string(failure.number()) + " " + failure.description();
    }
    return std::string();
  };
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(told([&] { connection_->CommitTrans(); }), "-2147168242 没有可以提交或回滚的事务。");
    EXPECT_EQ(told([&] { connection_->RollbackTrans(); }), "-2147168242 没有可以提交或回滚的事务。");
    connection_->BeginTrans();
    connection_->CommitTrans();
  }
}

}  // namespace dossierkit::conformance
