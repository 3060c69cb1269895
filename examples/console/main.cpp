// The smallest host: console DATABASE PERSON opens the dossier of one person.
#include <dossierkit/dossierkit.h>

#include <iostream>

bool Maintain(const std::string& database, const std::string& person) {
  dossierkit::qt::QtPlatform platform;
  const dossierkit::Component component(platform);
  dossierkit::IUserCtrl dossier;
  dossier.SetConnection(std::make_shared<dossierkit::sqlite::SqliteConnection>(database));
  dossier.personID = person;
  dossier.OperationType = 3;  // 0 for a new person
  dossier.PersonType = 1;
  return dossier.ShowDossier();  // True when the toolbar saved something
}

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: console DATABASE PERSON\n";
    return 2;
  }
  try {
    std::cout << (Maintain(argv[1], argv[2]) ? "saved\n" : "nothing saved\n");
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "console: " << failure.what() << "\n";
    return 1;
  }
}
