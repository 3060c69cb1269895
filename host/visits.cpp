#include "host/visits.h"

#include <QMessageBox>
#include <QPushButton>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

#include "host/care/care.h"
#include "host/doubled_box.h"
#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "shell/i_user_ctrl.h"

namespace dossierkit::host {
namespace {

constexpr std::int16_t kNewPerson = 0;
constexpr std::int16_t kStoredPerson = 3;
constexpr std::int16_t kFirstType = 1;  // the one whose recommendation has a page
constexpr std::int16_t kLastType = 3;

std::string Quoted(const std::string& text) { return "'" + environment::Replace(text, "'", "''") + "'"; }

// A visit does not fail because the care for it does: the user is told, and goes on.
void Try(QWidget* over, const std::function<void()>& care, const char* what_failed = "整理此人的记录失败：") {
  try {
    care();
  } catch (const std::exception& failure) {
    QMessageBox::warning(over, "人员档案", QString(what_failed) + failure.what());
  }
}

// Two visits of one person overwrite each other; to look does no harm.
bool IsOpenedAllTheSame(const std::string& clerk, QWidget* over) {
  QMessageBox box(QMessageBox::Question, "人员档案",
                  QString("%1 正在维护此人。两个人同时修改，会互相覆盖。").arg(QString::fromStdString(clerk)),
                  QMessageBox::NoButton, over);
  const auto* look = box.addButton("只查看，不修改(&L)", QMessageBox::AcceptRole);
  box.setDefaultButton(box.addButton("不打开(&N)", QMessageBox::RejectRole));
  box.exec();
  return look == box.clickedButton();
}

// The component does not hand back the identifiers of new persons: they are seen where it draws them.
class SeesNewPersons : public ado::Connection {
 public:
  SeesNewPersons(std::shared_ptr<ado::Connection> inner, std::shared_ptr<std::vector<std::string>> drawn)
      : inner_(std::move(inner)), drawn_(std::move(drawn)) {}

  bool IsOpen() const override { return inner_->IsOpen(); }
  ado::Snapshot Run(const std::string& statement) override {
    ado::Snapshot rows = inner_->Run(statement);
    if (statement == "select id from S_GUID where val='a'" && rows.RowCount() > 0)
      drawn_->push_back(environment::Middle(environment::TextOr(rows.ValueAt(0, 0), ""), 1, 36));
    return rows;
  }
  std::int32_t BeginTrans() override { return inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void RollbackTrans() override { inner_->RollbackTrans(); }

 private:
  std::shared_ptr<ado::Connection> inner_;
  std::shared_ptr<std::vector<std::string>> drawn_;
};

}  // namespace

Visits::Visits(std::shared_ptr<ado::Connection> database, std::shared_ptr<ado::Connection> connection,
               std::string photos, Sharing sharing)
    : database_(std::move(database)),
      connection_(std::move(connection)),
      photos_(std::move(photos)),
      sharing_(std::move(sharing)) {}

bool Visits::Open(const VisitRequest& request, QWidget* over) {
  std::optional<OpenMark> mark;
  Try(
      over, [&] { mark.emplace(*database_, request.person, sharing_.clerk); }, "不能标明谁正在维护此人：");
  if (mark && !mark->Another().empty() && !IsOpenedAllTheSame(mark->Another(), over)) return false;
  std::vector<std::string> persons;
  if (!request.person.empty() && (!mark || mark->Another().empty())) persons.push_back(request.person);
  PartDoubled(persons, over);
  PutInOrder(persons, over);

  bool saved = false;
  std::exception_ptr failure;
  const auto drawn = std::make_shared<std::vector<std::string>>();
  try {
    saved = ShowDossier(request, drawn);
  } catch (...) {
    failure = std::current_exception();
  }
  persons.insert(persons.end(), drawn->begin(), drawn->end());
  PartDoubled(persons, over);
  PutInOrder(persons, over);
  if (failure) std::rethrow_exception(failure);
  return saved;
}

bool Visits::ShowDossier(const VisitRequest& request, std::shared_ptr<std::vector<std::string>> drawn) {
  IUserCtrl dossier;
  dossier.SetConnection(std::make_shared<SeesNewPersons>(connection_, std::move(drawn)));
  dossier.personID = request.person;
  dossier.OperationType =
      request.operation_type.value_or(request.person.empty() ? kNewPerson : kStoredPerson);
  dossier.PersonType = request.person_type ? *request.person_type : PersonTypeOf(request.person);
  dossier.PhotoPath = photos_;
  const auto own_rows = sharing_.own_rows ? ShowOwnRows(*database_, request.person) : nullptr;
  return dossier.ShowDossier();
}

std::int16_t Visits::PersonTypeOf(const std::string& person) const {
  const auto rows = database_->Execute("select A0136 from A01 where A00=" + Quoted(person));
  if (rows->RecordCount() == 0) return kFirstType;
  const std::string type = environment::TextOr(rows->Fields(0), "");
  for (std::int16_t known = kFirstType; known <= kLastType; ++known) {
    if (type == std::to_string(known)) return known;
  }
  return kFirstType;
}

void Visits::PartDoubled(const std::vector<std::string>& persons, QWidget* over) {
  Try(over, [&] {
    for (const std::string& person : persons) {
      if (const auto doubled = care::FindDoubledPerson(*database_, person))
        AskWhichRowStays(*database_, *doubled, over);
    }
  });
}

void Visits::PutInOrder(const std::vector<std::string>& persons, QWidget* over) {
  Try(over, [&] {
    for (const std::string& person : persons) care::RenumberRecords(*database_, person);
  });
}

}  // namespace dossierkit::host
