// ForeignApplication: the application object of a host that shares nothing with the component's looks.
#pragma once

#include <QApplication>
#include <memory>
#include <string>
#include <vector>

namespace dossierkit::tests {

// With a style, palette, font, direction, locale and translator of its own, which are not to be touched.
class ForeignApplication : public QApplication {
 public:
  ForeignApplication(int& argc, char** argv);
  ~ForeignApplication() override;

  // The program's one; nullptr where that is of another class.
  static ForeignApplication* Instance();

  // What a slot throws is caught here, as Qt demands of programs whose slots throw, and noted.
  bool catches = false;
  std::vector<std::string> caught;
  bool notify(QObject* receiver, QEvent* event) override;

  // Fails the test that runs where anything of the program is not as it was at the start.
  void ExpectUntouched() const;

 private:
  struct Belongings;
  static Belongings Present();
  std::unique_ptr<QTranslator> translator_;
  std::unique_ptr<const Belongings> own_;
};

// Makes one for the whole program where the environment variable DOSSIERKIT_TESTS_AS_GUEST is set, and lets
// each test end with a look at it.
std::unique_ptr<ForeignApplication> MakeForeignApplication(int& argc, char** argv);

}  // namespace dossierkit::tests
