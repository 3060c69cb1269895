// A Qt program of its own kind: qt_widgets DATABASE lists the people and opens one's dossier on a click.
// Application object, style and palette are the host's, before and after a visit.
#include <dossierkit/dossierkit.h>

#include <QApplication>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QStyleFactory>
#include <QVBoxLayout>
#include <iostream>

namespace {

class HostApplication : public QApplication {
 public:
  HostApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setStyle(QStyleFactory::create("Windows"));
    setPalette(QPalette(QColor(0xDD, 0xE8, 0xD8)));
  }
};

class People : public QMainWindow {
 public:
  explicit People(const std::string& file)
      : database_(std::make_shared<dossierkit::sqlite::SqliteConnection>(file)) {
    const auto rows = database_->Execute("select A00,A0101 from A01 order by A0199");
    for (; !rows->EOF_(); rows->MoveNext()) {
      auto* person = new QListWidgetItem(Text(rows->Fields("A0101")), &list_);
      person->setData(Qt::UserRole, Text(rows->Fields("A00")));
    }
    list_.setCurrentRow(0);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->addWidget(&list_);
    column->addWidget(&open_);
    column->addWidget(&quit_);
    setCentralWidget(content);
    connect(&open_, &QPushButton::clicked, this, [this] {
      if (const auto* person = list_.currentItem()) Open(*person);
    });
    connect(&quit_, &QPushButton::clicked, qApp, &QApplication::quit);
  }

 private:
  static QString Text(const dossierkit::environment::Value& value) {
    return QString::fromStdString(dossierkit::environment::TextOr(value, ""));
  }

  void Open(const QListWidgetItem& person) {
    dossierkit::IUserCtrl dossier;
    dossier.SetConnection(database_);
    dossier.personID = person.data(Qt::UserRole).toString().toStdString();
    dossier.OperationType = 3;
    dossier.PersonType = 1;
    try {
      const bool saved = dossier.ShowDossier();
      std::cout << (saved ? "saved" : "nothing saved") << ", style " << style()->objectName().toStdString()
                << ", window " << palette().color(QPalette::Window).name().toStdString() << std::endl;
    } catch (const std::exception& failure) {
      statusBar()->showMessage(failure.what());
    }
  }

  std::shared_ptr<dossierkit::ado::Connection> database_;
  dossierkit::qt::QtPlatform platform_;
  dossierkit::Component component_{platform_};
  QListWidget list_;
  QPushButton open_{"Open"};
  QPushButton quit_{"Quit"};
};

}  // namespace

int main(int argc, char** argv) {
  const HostApplication application(argc, argv);
  if (argc != 2) {
    std::cerr << "usage: qt_widgets DATABASE\n";
    return 2;
  }
  try {
    People people(argv[1]);
    people.show();
    return QApplication::exec();
  } catch (const std::exception& failure) {
    std::cerr << "qt_widgets: " << failure.what() << "\n";
    return 1;
  }
}
