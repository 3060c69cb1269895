// The type library as hosts read it, and the entries of the registry.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "adapters/com/identifiers.h"
#include "adapters/com/pointers.h"
#include "adapters/com/registration.h"

namespace dossierkit::com {
namespace {

Pointer<ITypeLib> OwnTypeLibrary() {
  Pointer<ITypeLib> library;
  EXPECT_EQ(LoadTypeLibEx(OwnFile().c_str(), REGKIND_NONE, library.Put()), S_OK);
  return library;
}

std::string NameOf(const Pointer<ITypeInfo>& type, MEMBERID member) {
  Bstr name;
  type->GetDocumentation(member, name.Put(), nullptr, nullptr, nullptr);
  return TextOf(name.Get());
}

TEST(ComTypeLibrary, HasTheIdentifierAndVersionThatHostsBindTo) {
  const auto library = OwnTypeLibrary();
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
  const GUID expected = {0x7f89342b, 0x8d28, 0x4931, {0xb1, 0x02, 0x52, 0xd7, 0xed, 0x1d, 0x7c, 0xc9}};
  EXPECT_EQ(attributes->guid, expected);
  EXPECT_EQ(attributes->wMajorVerNum, 7);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  library->ReleaseTLibAttr(attributes);
}

TEST(ComTypeLibrary, DescribesTheOneClassAndItsInterfaceAlone) {
  const auto library = OwnTypeLibrary();
  std::vector<std::string> names;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    Bstr name;
    library->GetDocumentation(static_cast<INT>(i), name.Put(), nullptr, nullptr, nullptr);
    names.push_back(TextOf(name.Get()));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"_IUserCtrl", "IUserCtrl"}));
  Pointer<ITypeInfo> type;
  const GUID interface_id = {0x5c67c3bb, 0x83d5, 0x44be, {0xb6, 0xa7, 0x18, 0x4e, 0x2b, 0xd1, 0x68, 0x33}};
  const GUID class_id = {0x45483f2e, 0x58de, 0x420b, {0xb3, 0xb9, 0xa8, 0x7d, 0xa9, 0x5d, 0x41, 0x7d}};
  EXPECT_EQ(library->GetTypeInfoOfGuid(interface_id, type.Put()), S_OK);
  EXPECT_EQ(library->GetTypeInfoOfGuid(class_id, type.Put()), S_OK);
}

TEST(ComTypeLibrary, HasTheMembersInTheirOrderWithTheirTypes) {
  Pointer<ITypeInfo> late;
  ASSERT_EQ(OwnTypeLibrary()->GetTypeInfoOfGuid(kInterface, late.Put()), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(late->GetTypeAttr(&attributes), S_OK);
  EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FDUAL, 0);
  late->ReleaseTypeAttr(attributes);
  // The table of functions itself, behind those of IDispatch.
  HREFTYPE table = 0;
  ASSERT_EQ(late->GetRefTypeOfImplType(static_cast<UINT>(-1), &table), S_OK);
  Pointer<ITypeInfo> early;
  ASSERT_EQ(late->GetRefTypeInfo(table, early.Put()), S_OK);

  struct Member {
    std::string name;
    MEMBERID id;
    INVOKEKIND kind;
    VARTYPE type;
    bool gives;  // the one parameter is the result
  };
  std::vector<Member> members;
  const std::size_t first = 7 * sizeof(void*);
  ASSERT_EQ(early->GetTypeAttr(&attributes), S_OK);
  const UINT count = attributes->cFuncs;
  early->ReleaseTypeAttr(attributes);
  for (UINT i = 0; i < count; ++i) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(early->GetFuncDesc(i, &function), S_OK);
    EXPECT_EQ(static_cast<std::size_t>(function->oVft), first + i * sizeof(void*));
    ASSERT_EQ(function->cParams, 1);
    EXPECT_EQ(function->callconv, CC_STDCALL);
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
    const TYPEDESC& parameter = function->lprgelemdescParam[0].tdesc;
    const USHORT flags = function->lprgelemdescParam[0].paramdesc.wParamFlags;
    const bool gives = flags == (PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
    EXPECT_TRUE(gives || flags == PARAMFLAG_FIN) << flags;
    // An object is a pointer already, and one to a pointer where it is given back.
    EXPECT_EQ(parameter.vt == VT_PTR, gives) << i;
    members.push_back({NameOf(early, function->memid), function->memid, function->invkind,
                       parameter.vt == VT_PTR ? parameter.lptdesc->vt : parameter.vt, gives});
    early->ReleaseFuncDesc(function);
  }
  const std::vector<Member> expected = {{"Connection", 1, INVOKE_PROPERTYPUTREF, VT_DISPATCH, false},
                                        {"Connection", 1, INVOKE_PROPERTYGET, VT_DISPATCH, true},
                                        {"ShowDossier", 2, INVOKE_FUNC, VT_BOOL, true},
                                        {"OperationType", 3, INVOKE_PROPERTYPUT, VT_I2, false},
                                        {"OperationType", 3, INVOKE_PROPERTYGET, VT_I2, true},
                                        {"PersonType", 4, INVOKE_PROPERTYPUT, VT_I2, false},
                                        {"PersonType", 4, INVOKE_PROPERTYGET, VT_I2, true},
                                        {"PhotoPath", 5, INVOKE_PROPERTYPUT, VT_BSTR, false},
                                        {"PhotoPath", 5, INVOKE_PROPERTYGET, VT_BSTR, true},
                                        {"personID", 6, INVOKE_PROPERTYPUT, VT_BSTR, false},
                                        {"personID", 6, INVOKE_PROPERTYGET, VT_BSTR, true}};
  ASSERT_EQ(members.size(), expected.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    EXPECT_EQ(members[i].name, expected[i].name) << i;
    EXPECT_EQ(members[i].id, expected[i].id) << i;
    EXPECT_EQ(members[i].kind, expected[i].kind) << i;
    EXPECT_EQ(members[i].type, expected[i].type) << i;
    EXPECT_EQ(members[i].gives, expected[i].gives) << i;
  }
}

std::string ValueOf(const std::wstring& key, const wchar_t* name = nullptr) {
  wchar_t text[512];
  DWORD size = sizeof text;
  const LSTATUS status =
      RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? Utf8(std::wstring_view(text)) : "none";
}

bool HasKey(const std::wstring& name) {
  HKEY key = nullptr;
  const bool found = RegOpenKeyExW(HKEY_CLASSES_ROOT, name.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
  if (found) RegCloseKey(key);
  return found;
}

const std::wstring kClassName = L"CLSID\\{45483F2E-58DE-420B-B3B9-A87DA95D417D}";
const std::wstring kInterfaceName = L"Interface\\{5C67C3BB-83D5-44BE-B6A7-184E2BD16833}";
const std::wstring kLibraryName = L"TypeLib\\{7F89342B-8D28-4931-B102-52D7ED1D7CC9}";

// Every key below that one with its values, in the order of the registry.
void Dump(HKEY root, const std::wstring& path, std::vector<std::string>& lines) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  lines.push_back(Utf8(path));
  wchar_t name[512];
  BYTE data[4096];
  for (DWORD i = 0;; ++i) {
    DWORD length = 512;
    DWORD size = sizeof data;
    DWORD type = 0;
    const LSTATUS status = RegEnumValueW(key, i, name, &length, nullptr, &type, data, &size);
    if (status == ERROR_NO_MORE_ITEMS) break;
    ASSERT_EQ(status, ERROR_SUCCESS) << Utf8(path);
    lines.push_back(Utf8(path) + " | " + Utf8(name) + " | " + std::to_string(type) + " | " +
                    std::string(reinterpret_cast<const char*>(data), size));
  }
  for (DWORD i = 0;; ++i) {
    DWORD length = 512;
    if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    Dump(root, path + L"\\" + name, lines);
  }
  RegCloseKey(key);
}

std::vector<std::string> Classes() {
  std::vector<std::string> lines;
  Dump(HKEY_LOCAL_MACHINE, L"Software\\Classes", lines);
  Dump(HKEY_CURRENT_USER, L"Software\\Classes", lines);
  return lines;
}

TEST(ComRegistration, UnregisteringLeavesTheRegistryAsItWas) {
  const auto before = Classes();
  ASSERT_GT(before.size(), 1000U) << "the whole of it";
  Register(OwnFile());
  const auto registered = Classes();
  // Class, ProgID, library and interface: each key and value, of 64 bits also the interface for hosts of 32.
  EXPECT_GT(registered.size(), before.size() + 20);
  Unregister();
  EXPECT_EQ(Classes(), before);
}

TEST(ComRegistration, WritesWhatHostsLookFor) {
  Register(OwnFile());
  EXPECT_EQ(ValueOf(kClassName + L"\\InprocServer32"), Utf8(OwnFile()));
  EXPECT_EQ(ValueOf(kClassName + L"\\InprocServer32", L"ThreadingModel"), "Apartment");
  EXPECT_EQ(ValueOf(kClassName + L"\\ProgID"), "DossierKit.IUserCtrl");
  EXPECT_EQ(ValueOf(kClassName + L"\\TypeLib"), "{7F89342B-8D28-4931-B102-52D7ED1D7CC9}");
  EXPECT_EQ(ValueOf(L"DossierKit.IUserCtrl\\CLSID"), "{45483F2E-58DE-420B-B3B9-A87DA95D417D}");
  EXPECT_EQ(ValueOf(kInterfaceName + L"\\ProxyStubClsid32"), "{00020424-0000-0000-C000-000000000046}");
  EXPECT_TRUE(HasKey(kLibraryName + L"\\7.0"));
  Pointer<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(kLibrary, 7, 0, LOCALE_NEUTRAL, library.Put()), S_OK);
  Unregister();
}

TEST(ComRegistration, LeavesNothingOfOursBehind) {
  Register(OwnFile());
  Register(OwnFile());
  Unregister();
  for (const std::wstring& key :
       {kClassName, kInterfaceName, kLibraryName, std::wstring(L"DossierKit.IUserCtrl")}) {
    EXPECT_FALSE(HasKey(key)) << Utf8(key);
  }
  Unregister();
}

}  // namespace
}  // namespace dossierkit::com
