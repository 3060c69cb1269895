// UserCtrlObject: IUserCtrl as hosts see it, bound early by its table of functions or late by names.
#pragma once

#include <dossierkit_com.h>

#include <atomic>

#include "adapters/com/pointers.h"
#include "adapters/windows/windows_headers.h"
#include "shell/i_user_ctrl.h"

namespace dossierkit::com {

class UserCtrlObject : public _IUserCtrl, public ISupportErrorInfo {
 public:
  // A new object of one reference.
  static Pointer<_IUserCtrl> Make();

  UserCtrlObject(const UserCtrlObject&) = delete;
  UserCtrlObject& operator=(const UserCtrlObject&) = delete;

  // --- IUnknown --------------------------------------------------------------------------------
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // --- IDispatch -------------------------------------------------------------------------------
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** type) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* info, UINT* wrong) override;

  // --- ISupportErrorInfo -----------------------------------------------------------------------
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID told) override;

  // --- _IUserCtrl ------------------------------------------------------------------------------
  HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* connection) override;
  HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** connection) override;
  HRESULT STDMETHODCALLTYPE ShowDossier(VARIANT_BOOL* saved) override;
  HRESULT STDMETHODCALLTYPE put_OperationType(short type) override;
  HRESULT STDMETHODCALLTYPE get_OperationType(short* type) override;
  HRESULT STDMETHODCALLTYPE put_PersonType(short type) override;
  HRESULT STDMETHODCALLTYPE get_PersonType(short* type) override;
  HRESULT STDMETHODCALLTYPE put_PhotoPath(BSTR path) override;
  HRESULT STDMETHODCALLTYPE get_PhotoPath(BSTR* path) override;
  HRESULT STDMETHODCALLTYPE put_personID(BSTR person) override;
  HRESULT STDMETHODCALLTYPE get_personID(BSTR* person) override;

 private:
  explicit UserCtrlObject(Pointer<ITypeInfo> type);
  virtual ~UserCtrlObject();

  void SetConnection(IDispatch* connection);

  std::atomic<ULONG> references_{1};
  Pointer<ITypeInfo> type_;
  Pointer<IDispatch> connection_;
  IUserCtrl component_;
};

}  // namespace dossierkit::com
