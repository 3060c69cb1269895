#include <QApplication>

#include "bench/painted.h"

namespace dossierkit::bench {

void Paint() { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

}  // namespace dossierkit::bench
