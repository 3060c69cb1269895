#include "shell/i_user_ctrl.h"

#include "platform/environment/failure.h"
#include "shell/frm_dossier.h"
#include "visit/runtime.h"

namespace dossierkit {

const std::shared_ptr<ado::Connection>& IUserCtrl::Connection() {
  if (!connection_) connection_ = std::make_shared<ado::UnopenedConnection>();
  return connection_;
}

bool IUserCtrl::ShowDossier() {
  Runtime& runtime = TheRuntime();
  if (runtime.window && runtime.window->InVisit()) throw environment::MakeFailure(environment::kAlreadyShown);
  runtime.connection = Connection();
  if (!runtime.window) runtime.window = std::make_shared<frmDossier>(runtime.desktop);
  const auto window = runtime.window;
  window->personID = personID;
  window->PersonType = PersonType;
  window->PhotoPath = PhotoPath;
  window->OperationType = OperationType;
  window->IsSaved = false;
  window->ShowModal();
  return window->IsSaved;
}

}  // namespace dossierkit
