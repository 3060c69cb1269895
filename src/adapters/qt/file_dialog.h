// FileDialog: the choice of a file, in Chinese.
#pragma once

#include <QStringList>
#include <memory>
#include <string>

class QFileDialog;
class QWidget;

namespace dossierkit::qt {

// The filters of "name|patterns|name|patterns", as the native dialog wants them.
QStringList NameFiltersOf(const std::string& filter);

// The folder that a start folder means: itself, or that of the file that it names; empty for none.
QString StartFolderOf(const std::string& init_dir);

// A dialog that asks for one file, which need not exist.
std::unique_ptr<QFileDialog> MakeFileDialog(const std::string& filter, const std::string& init_dir,
                                            QWidget* parent);

}  // namespace dossierkit::qt
