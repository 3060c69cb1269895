#include "tests/support/visit.h"

#include <new>
#include <stdexcept>

#include "metadata/field_items.h"
#include "platform/ado/recordset.h"

namespace dossierkit::tests {

std::vector<std::string> Rows(ado::Connection& database, const std::string& query) {
  const auto rows = database.Execute(query);
  std::vector<std::string> lines;
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    std::string line;
    for (std::size_t column = 0; column < rows->FieldCount(); ++column) {
      if (column > 0) line += "|";
      line += environment::TextOr(rows->ValueAt(row, column), "NULL");
    }
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> Column(ado::Connection& database, const std::string& query) {
  const auto rows = database.Execute(query);
  std::vector<std::string> values;
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    values.push_back(environment::TextOr(rows->ValueAt(row, 0), "NULL"));
  }
  return values;
}

std::string One(ado::Connection& database, const std::string& query) {
  const auto values = Column(database, query);
  if (values.size() != 1) throw std::runtime_error(std::to_string(values.size()) + " rows: " + query);
  return values.front();
}

Visit::Visit() {
  InstallRuntime(runtime);
  RegisterPages(desktop);
  component.SetConnection(std::make_shared<ado::TracingConnection>(
      AsGiven(failing), [this](const ado::Trace& trace) { statements.push_back(trace.statement); }));
  component.OperationType = 3;
  component.PersonType = 1;
  component.personID = kPerson;
}

Visit::~Visit() {
  runtime.picker.reset();
  runtime.window.reset();
  UninstallRuntime(runtime);
}

bool Visit::Open(const std::function<void()>& scene) {
  script.WillRun([scene](toolkit::Form&) { scene(); });
  return component.ShowDossier();
}

bool Visit::OpenPerson(const std::string& person, const std::function<void()>& scene) {
  component.OperationType = 3;
  component.personID = person;
  return Open(scene);
}

bool Visit::OpenNew(const std::function<void()>& scene) {
  component.OperationType = 0;
  component.personID.clear();
  return Open(scene);
}

void Visit::EnterCode(const std::string& field, const std::string& code) {
  OnShow().FieldItems()->Item(field)->Dmcod = code;
  Text(field).SetText("某");
}

std::string Visit::Focus() {
  const auto& focus = Window().ActiveControl();
  return focus ? focus->Name() : "";
}

void Visit::GoTo(const std::string& set) {
  const auto& items = Window().VMenu1().Items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].key == set) {
      user.ClickMenu(static_cast<int>(i + 1));
      return;
    }
  }
  throw std::logic_error("no set " + set + " in the menu");
}

void Visit::RunOutOfMemoryAt(const std::string& beginning) {
  failing->FailAt(0, environment::kEngineFailure, "", [beginning](const std::string& statement) -> bool {
    if (statement.starts_with(beginning)) throw std::bad_alloc();
    return false;
  });
}

std::vector<std::string> Visit::Messages() const {
  std::vector<std::string> texts;
  for (const auto& message : script.messages) texts.push_back(message.text);
  return texts;
}

}  // namespace dossierkit::tests
