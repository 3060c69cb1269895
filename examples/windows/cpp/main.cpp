// A host in C++, bound early by the header that is made of dossierkit.idl: host DATABASE PERSON PHOTOGRAPHS
#include <dossierkit_com.h>

#include <cstdio>
#include <string>

// An object by its name; a failure comes back as its HRESULT.
static HRESULT Make(const wchar_t* name, REFIID wanted, void** object) {
  CLSID id;
  const HRESULT found = CLSIDFromProgID(name, &id);
  return FAILED(found) ? found : CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, wanted, object);
}

// connection.Open(text), by its name.
static HRESULT Open(IDispatch* connection, const std::wstring& text) {
  wchar_t name[] = L"Open";
  LPOLESTR names[] = {name};
  DISPID member = 0;
  VARIANT argument;
  V_VT(&argument) = VT_BSTR;
  V_BSTR(&argument) = SysAllocString(text.c_str());
  DISPPARAMS parameters = {&argument, nullptr, 1, 0};
  HRESULT result = connection->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &member);
  if (SUCCEEDED(result)) {
    result = connection->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                                nullptr, nullptr);
  }
  VariantClear(&argument);
  return result;
}

int wmain(int count, wchar_t** given) {
  if (count != 4) return 2;
  CoInitialize(nullptr);  // a thread with messages, as the window needs it
  IDispatch* connection = nullptr;
  _IUserCtrl* dossier = nullptr;
  VARIANT_BOOL saved = VARIANT_FALSE;
  HRESULT result = Make(L"ADODB.Connection", IID_IDispatch, reinterpret_cast<void**>(&connection));
  if (SUCCEEDED(result)) {
    result = Open(connection, std::wstring(L"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + given[1]);
  }
  if (SUCCEEDED(result))
    result = Make(L"DossierKit.IUserCtrl", __uuidof(_IUserCtrl), reinterpret_cast<void**>(&dossier));
  if (SUCCEEDED(result)) {
    BSTR person = SysAllocString(given[2]);
    BSTR photographs = SysAllocString(given[3]);
    dossier->putref_Connection(connection);
    dossier->put_personID(person);
    dossier->put_PhotoPath(photographs);
    dossier->put_OperationType(3);  // 0 for a new person
    dossier->put_PersonType(1);
    result = dossier->ShowDossier(&saved);
    SysFreeString(person);
    SysFreeString(photographs);
  }
  if (dossier) dossier->Release();
  if (connection) connection->Release();
  CoUninitialize();
  if (FAILED(result))
    std::printf("%08lx\n", static_cast<unsigned long>(result));
  else
    std::puts(saved ? "saved" : "nothing saved");
  return FAILED(result) ? 1 : 0;
}
