// What a host's own slots and timers throw: the host's affair, and not the visit's. This host's application
// object does not catch it.
#include <QLineEdit>
#include <stdexcept>
#include <vector>

#include "tests/adapters/qt/stage.h"
#include "tests/support/qt_warnings.h"

namespace dossierkit::qt {
namespace {

// Of each loop that an exception leaves.
const char* const kThroughALoop =
    "Qt has caught an exception thrown from an event handler. Throwing\n"
    "exceptions from an event handler is not supported in Qt.\n"
    "You must not let any exception whatsoever propagate through Qt code.";

class Throwing : public QObject {
 public:
  bool event(QEvent*) override { throw std::runtime_error("the host's"); }
};

// Hands out the calls that wait, as the next turn of a host's loop does; gives what
// left the loop.
std::string TurnOfTheHostsLoop() {
  try {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing";
}

class QtHostExceptions : public Stage {
 protected:
  // Runs one after another, straight from the loop of the active window, and closes it behind them.
  void InTheLoop(std::vector<std::function<void()>> turns) {
    turns_ = std::move(turns);
    Continue(0);
    form->ShowModal();
  }

 private:
  void Continue(std::size_t turn) {
    QTimer::singleShot(10, qApp, [this, turn] {
      if (!QApplication::activeWindow() || desktop.MessageShown()) {
        Continue(turn);
        return;
      }
      if (turn == turns_.size()) {
        form->UserClose();
        return;
      }
      Continue(turn + 1);
      turns_[turn]();
    });
  }
  std::vector<std::function<void()>> turns_;
};

TEST_F(QtHostExceptions, OutsideAVisitTheyLeaveTheHostsLoopAtOnce) {
  Throwing slot;
  QEvent event(QEvent::User);
  EXPECT_THROW(QCoreApplication::sendEvent(&slot, &event), std::runtime_error);
}

TEST_F(QtHostExceptions, ATimerThatThrowsDoesNotEndTheVisitAndIsHeardBehindIt) {
  bool went_on = false;
  const tests::DueQtWarning warning(kThroughALoop);
  InTheLoop({[] { throw std::runtime_error("the timer's"); },
             [&] {
               EXPECT_TRUE(form->Loaded());
               EXPECT_FALSE(form->LoopEnded());
               EXPECT_EQ(TurnOfTheHostsLoop(), "nothing");
               Native<QLineEdit>(*form->page->name)->setFocus();
               went_on = true;
             }});
  EXPECT_TRUE(went_on);
  EXPECT_EQ(TurnOfTheHostsLoop(), "the timer's");
  EXPECT_EQ(TurnOfTheHostsLoop(), "nothing");
}

TEST_F(QtHostExceptions, EachOfSeveralIsHeard) {
  const tests::DueQtWarning warning(kThroughALoop);
  InTheLoop({[] { throw std::runtime_error("first"); }, [] { throw std::runtime_error("second"); }});
  EXPECT_EQ(TurnOfTheHostsLoop(), "first");
  EXPECT_EQ(TurnOfTheHostsLoop(), "second");
  EXPECT_EQ(TurnOfTheHostsLoop(), "nothing");
}

TEST_F(QtHostExceptions, InAVisitAHandlerStillCatchesWhatItsOwnEventThrew) {
  std::string caught;
  InTheLoop({[&] {
    Throwing slot;
    QEvent event(QEvent::User);
    try {
      QCoreApplication::sendEvent(&slot, &event);
    } catch (const std::runtime_error& error) {
      caught = error.what();
    }
  }});
  EXPECT_EQ(caught, "the host's");
  EXPECT_EQ(TurnOfTheHostsLoop(), "nothing");
}

// A handler of the system's that makes Qt send an event: a filter of the host's sees it, and throws.
TEST_F(QtHostExceptions, AFilterOfTheHostsThatThrowsInTheMiddleOfAHandlerDoesNotEndTheVisit) {
  class Filter : public QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::FocusOut) throw std::runtime_error("the filter's");
      return false;
    }
  } filter;
  InTheLoop({[&] {
               Native<QLineEdit>(*form->page->name)->setFocus();
               auto* watched = Native<QLineEdit>(*form->page->name);
               watched->installEventFilter(&filter);
               QTest::keyClick(watched, Qt::Key_Tab);
               watched->removeEventFilter(&filter);
             },
             [&] { EXPECT_FALSE(form->LoopEnded()); }});
  EXPECT_EQ(TurnOfTheHostsLoop(), "the filter's");
}

TEST_F(QtHostExceptions, InAMessageBoxTheyWaitForTheVisitsEndToo) {
  const tests::DueQtWarning warning(kThroughALoop);
  InTheLoop({[&] {
    QTimer::singleShot(0, qApp, [] { throw std::runtime_error("over the box"); });
    AnswerNext("OK");
    EXPECT_EQ(desktop.MsgBox("一条消息"), toolkit::kAnswerOk);
    EXPECT_FALSE(form->LoopEnded());
  }});
  EXPECT_EQ(TurnOfTheHostsLoop(), "over the box");
}

}  // namespace
}  // namespace dossierkit::qt
