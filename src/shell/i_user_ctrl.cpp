#include "shell/i_user_ctrl.h"

#include <stdexcept>

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
  if (runtime.thread != std::this_thread::get_id())
    throw std::logic_error("DossierKit: ShowDossier is called on another thread than the Component's");
  if (runtime.InVisit()) throw environment::MakeFailure(environment::kAlreadyShown);
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
