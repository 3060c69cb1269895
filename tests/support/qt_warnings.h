// A warning of Qt's fails the test that it comes in.
#pragma once

#include <string>

namespace dossierkit::tests {

// From now on each warning that neither is due nor comes from the platform without a screen fails the
// test that runs, with the text and the stack.
void MakeQtWarningsFatal();

// A warning that has to come, once or more often, while this object lives, by its exact text; fails the test
// where it does not. Objects nest.
class DueQtWarning {
 public:
  explicit DueQtWarning(std::string text);
  ~DueQtWarning();
  DueQtWarning(const DueQtWarning&) = delete;
  DueQtWarning& operator=(const DueQtWarning&) = delete;

 private:
  friend bool IsDue(const std::string& text);
  std::string text_;
  bool came_ = false;
  DueQtWarning* outer_;
};

}  // namespace dossierkit::tests
