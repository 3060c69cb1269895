// StandIn: an ADODB.Connection of the tests', as a host hands one over, on any connection of ours. Late
// bound, with the members that ADO has under these names: State, Execute, BeginTrans, CommitTrans,
// RollbackTrans, Close.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/com/pointers.h"
#include "platform/ado/connection.h"

namespace dossierkit::com {

// An object by IDispatch whose members are known by name alone.
class LateObject : public IDispatch {
 public:
  LateObject(const LateObject&) = delete;
  LateObject& operator=(const LateObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* info, UINT*) override;

  ULONG References() const { return references_; }
  // How many there are of any kind.
  static int Living() { return living_; }
  // Before each call of a member of any object; what it throws is the member's failure.
  static inline std::function<void()> on_any_call;

 protected:
  // Arguments in their order.
  using Arguments = std::vector<const VARIANT*>;
  using Member = std::function<Variant(const Arguments&)>;

  LateObject() { ++living_; }
  virtual ~LateObject() { --living_; }
  void Has(const wchar_t* name, Member member) { members_.emplace_back(name, std::move(member)); }

 private:
  static inline std::atomic<int> living_ = 0;
  // Of several threads where a proxy calls.
  std::atomic<ULONG> references_ = 1;
  std::vector<std::pair<std::wstring, Member>> members_;
};

class StandInConnection : public LateObject {
 public:
  explicit StandInConnection(std::shared_ptr<ado::Connection> connection);

  // Before each call of a member, with its name; what it throws is the member's failure.
  std::function<void(const std::string&)> on_call;
  // Calls of the members of the connection and of its recordsets.
  int calls = 0;

 private:
  Variant Execute(const Arguments& arguments);

  std::shared_ptr<ado::Connection> connection_;
};

}  // namespace dossierkit::com
