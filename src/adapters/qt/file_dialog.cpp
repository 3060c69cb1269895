#include "adapters/qt/file_dialog.h"

#include <QFileDialog>
#include <QFileInfo>

#include "adapters/qt/texts.h"
#include "platform/toolkit/loop/file_filter.h"

namespace dossierkit::qt {

QStringList NameFiltersOf(const std::string& filter) {
  QStringList filters;
  for (const auto& read : toolkit::FileFiltersOf(filter)) {
    QStringList patterns;
    for (const auto& pattern : read.patterns) patterns << ToQString(pattern);
    filters << ToQString(read.name) + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) +
                   QLatin1Char(')');
  }
  return filters;
}

QString StartFolderOf(const std::string& init_dir) {
  if (init_dir.empty()) return {};
  QFileInfo start(ToNativePath(init_dir));
  while (!start.isDir() && !start.isRoot() && start.path() != start.filePath())
    start = QFileInfo(start.path());
  return start.isDir() ? start.absoluteFilePath() : QString();
}

std::unique_ptr<QFileDialog> MakeFileDialog(const std::string& filter, const std::string& init_dir,
                                            QWidget* parent) {
  auto dialog = std::make_unique<QFileDialog>(parent, QStringLiteral("打开"));
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  dialog->setAttribute(Qt::WA_QuitOnClose, false);
  dialog->setObjectName(QStringLiteral("FileDialog"));
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->setLabelText(QFileDialog::LookIn, QStringLiteral("查找范围："));
  dialog->setLabelText(QFileDialog::FileName, QStringLiteral("文件名(&N)："));
  dialog->setLabelText(QFileDialog::FileType, QStringLiteral("文件类型："));
  dialog->setLabelText(QFileDialog::Accept, QStringLiteral("打开(&O)"));
  dialog->setLabelText(QFileDialog::Reject, QStringLiteral("取消"));
  if (const QStringList filters = NameFiltersOf(filter); !filters.isEmpty()) dialog->setNameFilters(filters);
  if (const QString folder = StartFolderOf(init_dir); !folder.isEmpty()) dialog->setDirectory(folder);
  return dialog;
}

}  // namespace dossierkit::qt
