#include "adapters/qt/loops.h"

#include <QCoreApplication>
#include <QDebug>
#include <memory>
#include <utility>

namespace dossierkit::qt {

namespace {

// What a handler of the host's threw, on its way to a loop of the host's.
class Held {
 public:
  explicit Held(std::exception_ptr failure) : failure_(std::move(failure)) {}
  ~Held() {
    if (failure_) qCritical("What a handler of the host's threw during a visit reached no loop of the host");
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

  void Throw() { std::rethrow_exception(std::exchange(failure_, nullptr)); }

 private:
  std::exception_ptr failure_;
};

}  // namespace

void Loops::Contain(const std::function<void()>& work) {
  try {
    work();
  } catch (...) {
    if (loops_.empty()) throw;
    held_.push_back(std::current_exception());
  }
}

void Loops::RunUntil(const std::function<bool()>& done) {
  ++begun_;
  QEventLoop loop;
  loops_.push_back(&loop);
  while (!done()) {
    Contain([&] {
      loop.exec();
      // An application that is being quit lets no loop run: its events are run here.
      if (!done()) loop.processEvents(QEventLoop::WaitForMoreEvents);
    });
  }
  loops_.pop_back();
  if (loops_.empty()) HandBack();
}

void Loops::Wake() {
  for (QEventLoop* loop : loops_) loop->quit();
}

// Each leaves the next loop of the host's that runs, as an event of its own, also where nothing is left of
// the component then.
void Loops::HandBack() {
  for (std::exception_ptr& failure : std::exchange(held_, {})) {
    const auto held = std::make_shared<Held>(std::move(failure));
    QMetaObject::invokeMethod(
        qApp, [held] { held->Throw(); }, Qt::QueuedConnection);
  }
}

}  // namespace dossierkit::qt
