// Loops: the nested loops of windows, message boxes and the file dialog.
#pragma once

#include <QEventLoop>
#include <exception>
#include <functional>
#include <vector>

namespace dossierkit::qt {

// What a slot, timer or filter of the host's own throws is the host's. Where its application object does not
// catch it, it ends no loop here: it waits for the end of the visit, and leaves the host's loop then, as in
// any Qt program.
class Loops {
 public:
  // Runs events until `done`; asked again whenever the loops are woken.
  void RunUntil(const std::function<bool()>& done);
  void Wake();
  bool Running() const { return !loops_.empty(); }
  // Grows with each loop that begins.
  int Begun() const { return begun_; }
  // Runs what makes Qt send events: what a handler of the host's throws in the middle is held back, too.
  void Contain(const std::function<void()>& work);

 private:
  void HandBack();

  std::vector<QEventLoop*> loops_;
  std::vector<std::exception_ptr> held_;
  int begun_ = 0;
};

}  // namespace dossierkit::qt
