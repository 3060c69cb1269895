#include "adapters/qt/translator.h"

#include <QCoreApplication>
#include <QEvent>
#include <cstring>

namespace dossierkit::qt {
namespace {

struct TextRow {
  const char* source;
  const char* text;
};

// Of the file dialog and the parts that it is made of, and of the menu of its boxes and the host's.
constexpr TextRow kTexts[] = {
    {"Look in:", "查找范围："},
    {"Back", "后退"},
    {"Go back", "后退"},
    {"Forward", "前进"},
    {"Go forward", "前进"},
    {"Parent Directory", "上级文件夹"},
    {"Go to the parent directory", "到上级文件夹"},
    {"Create New Folder", "新建文件夹"},
    {"Create a New Folder", "新建文件夹"},
    {"New Folder", "新建文件夹"},
    {"List View", "列表"},
    {"Change to list view mode", "显示为列表"},
    {"Detail View", "详细信息"},
    {"Change to detail view mode", "显示详细信息"},
    {"Sidebar", "常用位置"},
    {"List of places and bookmarks", "常用位置"},
    {"Files", "文件"},
    {"Files of type:", "文件类型："},
    {"File &name:", "文件名(&N)："},
    {"&Open", "打开(&O)"},
    {"&Choose", "选择(&C)"},
    {"Open", "打开"},
    {"Cancel", "取消"},
    {"OK", "确定"},
    {"&Yes", "是(&Y)"},
    {"&No", "否(&N)"},
    {"Directory:", "文件夹："},
    {"Directories", "文件夹"},
    {"All files (*)", "所有文件 (*)"},
    {"All Files (*)", "所有文件 (*)"},
    {"Find Directory", "查找文件夹"},
    {"&Rename", "重命名(&R)"},
    {"&Delete", "删除(&D)"},
    {"Show &hidden files", "显示隐藏文件(&H)"},
    {"&New Folder", "新建文件夹(&N)"},
    {"My Computer", "我的电脑"},
    {"Computer", "我的电脑"},
    {"Recent Places", "最近的位置"},
    {"Remove", "移除"},
    {"Name", "名称"},
    {"Size", "大小"},
    {"Kind", "类型"},
    {"Type", "类型"},
    {"Date Modified", "修改日期"},
    {"Drive", "驱动器"},
    {"File", "文件"},
    {"File Folder", "文件夹"},
    {"Folder", "文件夹"},
    {"%1 File", "%1 文件"},
    {"&Undo", "撤销(&U)"},
    {"&Redo", "恢复(&R)"},
    {"Cu&t", "剪切(&T)"},
    {"&Copy", "复制(&C)"},
    {"&Paste", "粘贴(&P)"},
    {"Delete", "删除"},
    {"Select All", "全选"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\n文件未找到。\n请核对文件名。"},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\n文件夹未找到。\n请核对名称。"},
};

}  // namespace

QString Translator::translate(const char* context, const char* source, const char*, int) const {
  // Qt's own classes alone: a host's text may read the same.
  if (!context || context[0] != 'Q') return {};
  for (const TextRow& row : kTexts) {
    if (source && std::strcmp(row.source, source) == 0) return QString::fromUtf8(row.text);
  }
  return {};
}

TextsInChinese::TextsInChinese() {
  qApp->installEventFilter(this);
  QCoreApplication::installTranslator(&translator_);
  qApp->removeEventFilter(this);
}

TextsInChinese::~TextsInChinese() {
  qApp->installEventFilter(this);
  QCoreApplication::removeTranslator(&translator_);
  qApp->removeEventFilter(this);
}

bool TextsInChinese::eventFilter(QObject*, QEvent* event) { return event->type() == QEvent::LanguageChange; }

}  // namespace dossierkit::qt
