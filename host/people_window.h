// PeopleWindow: the people of the database, and the way to their dossiers.
#pragma once

#include <QWidget>
#include <exception>
#include <functional>
#include <memory>
#include <string>

#include "host/visits.h"
#include "platform/ado/connection.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace dossierkit::host {

class PeopleModel;

class PeopleWindow : public QWidget {
 public:
  // `visit` opens the component over this window; its failures are shown, unless the component told of them.
  using Visit = std::function<void(const VisitRequest&, QWidget& over)>;
  PeopleWindow(std::shared_ptr<ado::Connection> connection, Visit visit);

  // Chooses the type of the persons who are added, 1 to 3; any other is the first.
  void ChoosePersonType(int type);

 private:
  void Build();
  void Reload();
  void Search();
  void ShowPeople(int selected);
  void OpenSelected();
  void Open(const std::string& person);
  void ShowNotice();
  void ShowFailure(const std::exception& failure);
  std::string SelectedPerson() const;

  std::shared_ptr<ado::Connection> connection_;
  Visit visit_;
  QLineEdit* search_ = nullptr;
  QComboBox* person_type_ = nullptr;
  QTableView* table_ = nullptr;
  PeopleModel* model_ = nullptr;
  QPushButton* open_ = nullptr;
  QLabel* count_ = nullptr;
  QLabel* notice_ = nullptr;
};

}  // namespace dossierkit::host
