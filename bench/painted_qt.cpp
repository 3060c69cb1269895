#include <QApplication>
#include <fstream>
#include <string>

#include "bench/painted.h"

namespace dossierkit::bench {

void Paint() { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

double PrivateMebibytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("RssAnon:")) return std::stod(line.substr(8)) / 1024;
  }
  return 0;
}

}  // namespace dossierkit::bench
