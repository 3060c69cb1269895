// The box that tells the user of a failure, and shows whoever mends it where it happened.
#pragma once

#include <QString>
#include <exception>

class QWidget;

namespace dossierkit::host {

// Shows `text` and returns when the box is closed. Of a Failure, 详细信息 shows number, set, field, what was
// being done and the statement, and 复制 puts them on the clipboard.
void ShowFailureBox(QWidget* over, const QString& text, const std::exception& failure);

}  // namespace dossierkit::host
