// A library of the tests in the place of ADO, whose rows Wine cannot read: a class that hosts make by its
// name, DossierKitTests.Connection, and open on an SQLite file, "...;Data Source=FILE".
#include <memory>
#include <string>

#include "adapters/com/pointers.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "platform/environment/failure.h"
#include "tests/adapters/com/stand_in.h"

namespace dossierkit::com {
namespace {

// {0B6B7A0C-9C57-4D5B-8A51-6F5F3E1C2D47}
constexpr GUID kStandInClass = {0x0b6b7a0c, 0x9c57, 0x4d5b, {0x8a, 0x51, 0x6f, 0x5f, 0x3e, 0x1c, 0x2d, 0x47}};

class LateOpened : public ado::Connection {
 public:
  void Open(const std::string& text) {
    const std::string name = "Data Source=";
    const auto at = text.find(name);
    const std::string file = at == std::string::npos ? text : text.substr(at + name.size());
    open_ = std::make_unique<sqlite::SqliteConnection>(file, std::chrono::milliseconds(1000));
  }
  void Close() { open_.reset(); }
  bool IsOpen() const override { return open_ != nullptr; }
  ado::Snapshot Run(const std::string& statement) override { return Opened().Run(statement); }
  std::int32_t BeginTrans() override { return Opened().BeginTrans(); }
  void CommitTrans() override { Opened().CommitTrans(); }
  void RollbackTrans() override { Opened().RollbackTrans(); }

 private:
  ado::Connection& Opened() const {
    // ADO's own number of a closed connection.
    if (!open_) throw environment::Failure(3704, "对象关闭时，不允许操作。");
    return *open_;
  }
  std::unique_ptr<sqlite::SqliteConnection> open_;
};

class StandInAdo : public StandInConnection {
 public:
  explicit StandInAdo(const std::shared_ptr<LateOpened>& connection) : StandInConnection(connection) {
    Has(L"Open", [connection](const Arguments& arguments) {
      connection->Open(TextOf(V_BSTR(arguments.at(0))));
      return Variant();
    });
    Has(L"Close", [connection](const Arguments&) {
      connection->Close();
      return Variant();
    });
  }
};

// Never counted: it lives as long as the library, which is not unloaded.
class Factory : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    *object = wanted == IID_IUnknown || wanted == IID_IClassFactory ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID wanted, void** object) override {
    Pointer<IDispatch> made;
    *made.Put() = new StandInAdo(std::make_shared<LateOpened>());
    return made->QueryInterface(wanted, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace
}  // namespace dossierkit::com

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID wanted_class, REFIID wanted, void** object) {
  static dossierkit::com::Factory factory;
  if (wanted_class != dossierkit::com::kStandInClass) return CLASS_E_CLASSNOTAVAILABLE;
  return factory.QueryInterface(wanted, object);
}

HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }
}
