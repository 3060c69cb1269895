#include "adapters/com/user_ctrl_object.h"

#include <memory>

#include "adapters/com/ado_connection.h"
#include "adapters/com/failures.h"
#include "adapters/com/identifiers.h"
#include "adapters/com/registration.h"
#include "adapters/com/server.h"
#include "visit/runtime.h"

namespace dossierkit::com {
namespace {

// The description of the interface, from the library's own resource: what the registry says does not matter.
Pointer<ITypeInfo> LoadType() {
  Pointer<ITypeLib> library;
  HRESULT result = LoadTypeLibEx(OwnFile().c_str(), REGKIND_NONE, library.Put());
  Pointer<ITypeInfo> type;
  if (SUCCEEDED(result)) result = library->GetTypeInfoOfGuid(kInterface, type.Put());
  if (FAILED(result)) throw FailureOf(result, nullptr);
  return type;
}

HRESULT GiveText(const std::string& text, BSTR* out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  return Guarded([&] {
    *out = Bstr(text).Release();
    return S_OK;
  });
}

}  // namespace

Pointer<_IUserCtrl> UserCtrlObject::Make() {
  Pointer<_IUserCtrl> object;
  *object.Put() = new UserCtrlObject(LoadType());
  return object;
}

UserCtrlObject::UserCtrlObject(Pointer<ITypeInfo> type) : type_(std::move(type)) { Hold(); }

UserCtrlObject::~UserCtrlObject() { LetGo(); }

STDMETHODIMP UserCtrlObject::QueryInterface(REFIID wanted, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (wanted == IID_IUnknown || wanted == IID_IDispatch || wanted == kInterface) {
    *object = static_cast<_IUserCtrl*>(this);
  } else if (wanted == IID_ISupportErrorInfo) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) UserCtrlObject::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) UserCtrlObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP UserCtrlObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP UserCtrlObject::GetTypeInfo(UINT index, LCID, ITypeInfo** type) {
  if (!type) return E_POINTER;
  *type = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  *type = type_.Copy();
  return S_OK;
}

STDMETHODIMP UserCtrlObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return type_->GetIDsOfNames(names, count, ids);
}

STDMETHODIMP UserCtrlObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                    VARIANT* result, EXCEPINFO* info, UINT* wrong) {
  SetErrorInfo(0, nullptr);
  // Some hosts know no other way to assign an object than any value.
  DISPID connection = DISPID_UNKNOWN;
  LPOLESTR name = const_cast<LPOLESTR>(L"Connection");
  if ((flags & DISPATCH_PROPERTYPUT) && SUCCEEDED(type_->GetIDsOfNames(&name, 1, &connection)) &&
      member == connection) {
    flags = DISPATCH_PROPERTYPUTREF;
  }
  return type_->Invoke(static_cast<_IUserCtrl*>(this), member, flags, parameters, result, info, wrong);
}

STDMETHODIMP UserCtrlObject::InterfaceSupportsErrorInfo(REFIID told) {
  return told == kInterface ? S_OK : S_FALSE;
}

void UserCtrlObject::SetConnection(IDispatch* connection) {
  component_.SetConnection(connection ? std::make_shared<AdoConnection>(connection) : nullptr);
  connection_ = Pointer<IDispatch>(connection);
}

STDMETHODIMP UserCtrlObject::putref_Connection(IDispatch* connection) {
  return Guarded([&] {
    SetConnection(connection);
    return S_OK;
  });
}

STDMETHODIMP UserCtrlObject::get_Connection(IDispatch** connection) {
  if (!connection) return E_POINTER;
  *connection = nullptr;
  return Guarded([&] {
    if (!connection_) SetConnection(MakeUnopenedConnection().Get());
    *connection = connection_.Copy();
    return S_OK;
  });
}

STDMETHODIMP UserCtrlObject::ShowDossier(VARIANT_BOOL* saved) {
  if (!saved) return E_POINTER;
  *saved = VARIANT_FALSE;
  // A host may let go of the object while its window is open.
  const Pointer<IUnknown> held(static_cast<_IUserCtrl*>(this));
  return Guarded([&]() -> HRESULT {
    if (!RequireServer()) return RPC_E_WRONG_THREAD;
    if (!connection_ && !TheRuntime().InVisit()) SetConnection(MakeUnopenedConnection().Get());
    *saved = component_.ShowDossier() ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  });
}

STDMETHODIMP UserCtrlObject::put_OperationType(short type) {
  component_.OperationType = type;
  return S_OK;
}

STDMETHODIMP UserCtrlObject::get_OperationType(short* type) {
  if (!type) return E_POINTER;
  *type = component_.OperationType;
  return S_OK;
}

STDMETHODIMP UserCtrlObject::put_PersonType(short type) {
  component_.PersonType = type;
  return S_OK;
}

STDMETHODIMP UserCtrlObject::get_PersonType(short* type) {
  if (!type) return E_POINTER;
  *type = component_.PersonType;
  return S_OK;
}

STDMETHODIMP UserCtrlObject::put_PhotoPath(BSTR path) {
  return Guarded([&] {
    component_.PhotoPath = TextOf(path);
    return S_OK;
  });
}

STDMETHODIMP UserCtrlObject::get_PhotoPath(BSTR* path) { return GiveText(component_.PhotoPath, path); }

STDMETHODIMP UserCtrlObject::put_personID(BSTR person) {
  return Guarded([&] {
    component_.personID = TextOf(person);
    return S_OK;
  });
}

STDMETHODIMP UserCtrlObject::get_personID(BSTR* person) { return GiveText(component_.personID, person); }

}  // namespace dossierkit::com
