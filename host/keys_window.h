// F1: the page of keys, in a window of its own over whatever is open.
#pragma once

#include <QObject>

namespace dossierkit::host {

// While it lives, F1 shows the page in any window of the program, in a visit too. Needs the application.
class KeysHelp : public QObject {
 public:
  KeysHelp();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool shown_ = false;
};

// Shows the page until it is closed.
void ShowKeys();

}  // namespace dossierkit::host
