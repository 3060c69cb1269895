// PeopleWindow: the people of the database, and the way to their dossiers.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "platform/ado/connection.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace dossierkit::host {

class PeopleModel;

// What the user asks for: a person, or a new one where the identifier is empty.
struct VisitRequest {
  std::string person;
  std::int16_t person_type = 1;
};

class PeopleWindow : public QWidget {
 public:
  // `visit` opens the component; its failures are shown.
  PeopleWindow(std::shared_ptr<ado::Connection> connection, std::function<void(const VisitRequest&)> visit);

 private:
  void Build();
  void Reload();
  void Search();
  void ShowPeople(int selected);
  void OpenSelected();
  void Visit(const std::string& person);
  std::string SelectedPerson() const;

  std::shared_ptr<ado::Connection> connection_;
  std::function<void(const VisitRequest&)> visit_;
  QLineEdit* search_ = nullptr;
  QComboBox* person_type_ = nullptr;
  QTableView* table_ = nullptr;
  PeopleModel* model_ = nullptr;
  QPushButton* open_ = nullptr;
  QLabel* count_ = nullptr;
};

}  // namespace dossierkit::host
