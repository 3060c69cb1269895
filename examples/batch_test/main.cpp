// A host's test of its own database, without a screen: batch_test DATABASE opens every person and clicks
// every set of the menu. A failure, and a message that the clerk would meet, is told and gives exit code 1.
#include <dossierkit/dossierkit.h>

#include <iostream>

namespace {

namespace ado = dossierkit::ado;
namespace headless = dossierkit::headless;

class Walk {
 public:
  explicit Walk(const std::string& file)
      : database_(std::make_shared<dossierkit::sqlite::SqliteConnection>(file)) {}

  void OpenEveryPerson() {
    // Behind the sets of the database stands the recommendation of the person type.
    const int items =
        database_->Execute("select tblname from s_infotable where tblname like 'a%'")->RecordCount() + 1;
    const auto people = database_->Execute("select A00,A0101 from A01 order by A0199");
    for (; !people->EOF_(); people->MoveNext())
      Open(TextOr(people->Fields("A00"), ""), TextOr(people->Fields("A0101"), ""), items);
  }

  int pages = 0;
  int faults = 0;

 private:
  void Open(const std::string& person, const std::string& name, int items) {
    int item = 1;
    platform_.messages.clear();
    platform_.WillRun([&](dossierkit::toolkit::Form&) {
      for (item = 2; item <= items; ++item) user_.ClickMenu(item);
    });
    dossierkit::IUserCtrl dossier;
    dossier.SetConnection(database_);
    dossier.personID = person;
    dossier.OperationType = 3;
    dossier.PersonType = 1;
    try {
      dossier.ShowDossier();
      pages += items;
    } catch (const std::exception& failure) {
      Tell(name, item, failure.what());
    }
    for (const headless::Message& message : platform_.messages) Tell(name, item, message.text);
  }

  void Tell(const std::string& name, int item, const std::string& fault) {
    std::cout << name << ", item " << item << " of the menu: " << fault << "\n";
    ++faults;
  }

  std::shared_ptr<ado::Connection> database_;
  headless::HeadlessPlatform platform_;
  dossierkit::Component component_{platform_};
  headless::HeadlessUser user_{component_.GetDesktop()};
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: batch_test DATABASE\n";
    return 2;
  }
  try {
    Walk walk(argv[1]);
    walk.OpenEveryPerson();
    std::cout << walk.pages << " pages, " << walk.faults << " faults\n";
    return walk.faults == 0 ? 0 : 1;
  } catch (const std::exception& failure) {
    std::cerr << "batch_test: " << failure.what() << "\n";
    return 2;
  }
}
