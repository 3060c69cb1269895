// The least that a program does to show the page of a person's first set in plain Qt, read with plain SQLite:
// bare_program DATABASE PERSON SHARE-FOLDER. The fields with their captions and texts, the names of the
// sets, a toolbar, the photograph; no behaviour.
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QScreen>
#include <QToolBar>

#include "bench/bare_page.h"
#include "bench/plain_sqlite.h"

using dossierkit::bench::BarePage;
using dossierkit::bench::PlainSqlite;

namespace {

QStringList Texts(PlainSqlite& database, const std::string& query) {
  QStringList texts;
  for (const std::string& text : database.Run(query)) texts << QString::fromStdString(text);
  return texts;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc != 4) return 2;
  const std::string person = argv[2];
  const QString share = QString::fromUtf8(argv[3]);
  PlainSqlite database(argv[1]);
  QWidget window;
  window.resize(840, 600);
  auto* toolbar = new QToolBar(&window);
  toolbar->setGeometry(0, 0, 840, 40);
  toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const QStringList commands = {"增加(&N)", "删除(&D)", "保存(&S)", "取消(&C)", "退出(&X)"};
  for (int i = 0; i < commands.size(); ++i) {
    toolbar->addAction(QIcon(share + QStringLiteral("/icons/toolbar-%1.png").arg(i + 1)), commands[i]);
  }
  auto* sets = new QListWidget(&window);
  sets->setGeometry(0, 40, 120, 560);
  sets->addItems(Texts(database, "select tbldesc from s_infotable order by OtherProp"));
  auto* page =
      new BarePage(Texts(database, "select itemdesc from s_infoitem where tblname='A01' order by itemname"));
  page->setParent(&window);
  page->setGeometry(120, 40, 720, 560);
  const QStringList columns =
      Texts(database, "select itemname from s_infoitem where tblname='A01' order by itemname");
  page->SetTexts(
      Texts(database, "select " + columns.join(',').toStdString() + " from A01 where A00='" + person + "'"));
  auto* photograph = new QLabel(&window);
  photograph->setGeometry(700, 50, 120, 160);
  photograph->setScaledContents(true);
  photograph->setPixmap(
      QPixmap(share + QStringLiteral("/photos/") + QString::fromStdString(person) + QStringLiteral(".jpg")));
  window.move(QGuiApplication::primaryScreen()->geometry().center() - window.rect().center());
  window.show();
  return QApplication::exec();
}
