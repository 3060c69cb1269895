// The object that hosts hold: its members, early and late bound, visits, failures, and who keeps what alive.
#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <thread>

#include "tests/adapters/com/library.h"

namespace dossierkit::com {
namespace {

std::string MemberText(HRESULT (STDMETHODCALLTYPE _IUserCtrl::*get)(BSTR*),
                       const Pointer<_IUserCtrl>& object) {
  Bstr text;
  EXPECT_EQ((object.Get()->*get)(text.Put()), S_OK);
  return com::TextOf(text.Get());
}

short NumberOf(HRESULT (STDMETHODCALLTYPE _IUserCtrl::*get)(short*), const Pointer<_IUserCtrl>& object) {
  short number = -1;
  EXPECT_EQ((object.Get()->*get)(&number), S_OK);
  return number;
}

// A member by its name, as script engines call it.
struct Answer {
  HRESULT result;
  Variant value;
  EXCEPINFO info;
};

Answer Call(const Pointer<_IUserCtrl>& object, const wchar_t* member, WORD flags,
            std::vector<Variant> values = {}) {
  DISPID id = 0;
  LPOLESTR name = const_cast<LPOLESTR>(member);
  Answer answer{object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), {}, {}};
  if (FAILED(answer.result)) return answer;
  std::vector<VARIANTARG> arguments;
  for (const Variant& value : values) arguments.push_back(value.Get());
  DISPID put = DISPID_PROPERTYPUT;
  const bool names = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
  DISPPARAMS parameters{arguments.data(), names ? &put : nullptr, static_cast<UINT>(arguments.size()),
                        names ? 1U : 0U};
  answer.result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &answer.value.Get(),
                                 &answer.info, nullptr);
  return answer;
}

std::vector<Variant> One(Variant value) {
  std::vector<Variant> values;
  values.push_back(std::move(value));
  return values;
}

Variant OfObject(IDispatch* object) {
  object->AddRef();
  Variant value;
  V_VT(&value.Get()) = VT_DISPATCH;
  V_DISPATCH(&value.Get()) = object;
  return value;
}

class ComUserCtrl : public Library {
 protected:
  HRESULT Show(const Pointer<_IUserCtrl>& object, VARIANT_BOOL& saved) { return object->ShowDossier(&saved); }
  HRESULT Show(const Pointer<_IUserCtrl>& object) {
    VARIANT_BOOL saved = VARIANT_TRUE;
    return Show(object, saved);
  }
};

TEST_F(ComUserCtrl, BeginsEmpty) {
  const auto object = Make();
  EXPECT_EQ(NumberOf(&_IUserCtrl::get_OperationType, object), 0);
  EXPECT_EQ(NumberOf(&_IUserCtrl::get_PersonType, object), 0);
  EXPECT_EQ(MemberText(&_IUserCtrl::get_PhotoPath, object), "");
  EXPECT_EQ(MemberText(&_IUserCtrl::get_personID, object), "");
}

TEST_F(ComUserCtrl, GivesBackWhatWasSet) {
  const auto object = Make();
  object->put_OperationType(-32768);
  object->put_PersonType(32767);
  object->put_PhotoPath(Bstr("D:\\照片").Get());
  object->put_personID(Bstr(std::string("a\0b", 3)).Get());
  EXPECT_EQ(NumberOf(&_IUserCtrl::get_OperationType, object), -32768);
  EXPECT_EQ(NumberOf(&_IUserCtrl::get_PersonType, object), 32767);
  EXPECT_EQ(MemberText(&_IUserCtrl::get_PhotoPath, object), "D:\\照片");
  EXPECT_EQ(MemberText(&_IUserCtrl::get_personID, object), std::string("a\0b", 3));
  object->put_personID(nullptr);
  EXPECT_EQ(MemberText(&_IUserCtrl::get_personID, object), "");
  object->putref_Connection(host_.Get());
  Pointer<IDispatch> connection;
  EXPECT_EQ(object->get_Connection(connection.Put()), S_OK);
  EXPECT_EQ(connection.Get(), host_.Get());
}

TEST_F(ComUserCtrl, IsCalledByNamesInAnyCase) {
  const auto object = Make();
  EXPECT_EQ(Call(object, L"PERSONTYPE", DISPATCH_PROPERTYPUT, One(Variant::OfInteger(2))).result, S_OK);
  EXPECT_EQ(NumberOf(&_IUserCtrl::get_PersonType, object), 2);
  const Answer answer = Call(object, L"PersonType", DISPATCH_PROPERTYGET);
  EXPECT_EQ(answer.result, S_OK);
  EXPECT_EQ(V_VT(&answer.value.Get()), VT_I2);
  EXPECT_EQ(V_I2(&answer.value.Get()), 2);
  EXPECT_EQ(Call(object, L"personId", DISPATCH_PROPERTYPUT, One(Variant::OfText("x"))).result, S_OK);
  EXPECT_EQ(MemberText(&_IUserCtrl::get_personID, object), "x");
  EXPECT_EQ(Call(object, L"Nothing", DISPATCH_METHOD).result, DISP_E_UNKNOWNNAME);
}

TEST_F(ComUserCtrl, TakesAConnectionByReferenceOrByValue) {
  constexpr WORD kBoth = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
  for (const WORD flags : {WORD{DISPATCH_PROPERTYPUTREF}, WORD{DISPATCH_PROPERTYPUT}, kBoth}) {
    const auto object = Make();
    EXPECT_EQ(Call(object, L"Connection", flags, One(OfObject(host_.Get()))).result, S_OK) << flags;
    Pointer<IDispatch> connection;
    object->get_Connection(connection.Put());
    EXPECT_EQ(connection.Get(), host_.Get()) << flags;
  }
}

TEST_F(ComUserCtrl, RefusesANumberBeyondSixteenBits) {
  const auto object = Make();
  EXPECT_EQ(Call(object, L"OperationType", DISPATCH_PROPERTYPUT, One(Variant::OfInteger(40000))).result,
            DISP_E_OVERFLOW);
  EXPECT_EQ(Call(object, L"OperationType", DISPATCH_PROPERTYPUT, One(Variant::OfText("x"))).result,
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(NumberOf(&_IUserCtrl::get_OperationType, object), 0);
}

TEST_F(ComUserCtrl, AVisitWithoutASaveIsFalseAndOneWithASaveIsTrue) {
  const auto object = Make();
  Prepare(object);
  bool shown = false;
  Scene([&](headless::HeadlessUser& user) {
    shown = true;
    user.ClickToolbar("Exit");
  });
  VARIANT_BOOL saved = VARIANT_TRUE;
  EXPECT_EQ(Show(object, saved), S_OK);
  EXPECT_TRUE(shown);
  EXPECT_EQ(saved, VARIANT_FALSE);
  Scene([&](headless::HeadlessUser& user) {
    user.ClickToolbar("Save");
    user.ClickToolbar("Exit");
  });
  EXPECT_EQ(Show(object, saved), S_OK);
  EXPECT_EQ(saved, VARIANT_TRUE);
}

TEST_F(ComUserCtrl, WhoIsNotStoredIsToldAndTheCallFails) {
  const auto object = Make();
  Prepare(object);
  object->put_personID(Bstr("nobody").Get());
  EXPECT_EQ(Show(object), static_cast<HRESULT>(0x800A016C));
  EXPECT_EQ(Words(), "对象已卸载");
  ASSERT_EQ(Views()->messages.size(), 1U);
  EXPECT_EQ(Views()->messages[0].text, "无法维护此人信息。可能不存在此人Id号或Id号重复。");
}

TEST_F(ComUserCtrl, AFailureIsToldToScriptsWithSourceAndWords) {
  const auto object = Make();
  Prepare(object);
  database_->Close();
  const Answer answer = Call(object, L"ShowDossier", DISPATCH_METHOD);
  EXPECT_EQ(answer.result, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.info.scode, static_cast<SCODE>(0x800A0E7D));
  EXPECT_EQ(TextOf(answer.info.bstrSource), "DossierKit.IUserCtrl");
  EXPECT_NE(TextOf(answer.info.bstrDescription), "");
}

TEST_F(ComUserCtrl, WhatIsNoConnectionIsRefusedByTheVisit) {
  const auto object = Make();
  Prepare(object);
  const auto other = Make();
  object->putref_Connection(other.Get());
  EXPECT_EQ(Show(object), static_cast<HRESULT>(0x800A01B6));
  EXPECT_EQ(Words(), "对象不支持该属性或方法");
  object->putref_Connection(host_.Get());
  Scene([](headless::HeadlessUser& user) { user.ClickToolbar("Exit"); });
  EXPECT_EQ(Show(object), S_OK) << "the next visit works";
}

TEST_F(ComUserCtrl, ASecondVisitInAVisitIsRefused) {
  const auto object = Make();
  Prepare(object);
  HRESULT result = S_OK;
  std::string words;
  Scene([&](headless::HeadlessUser& user) {
    const auto second = Make();
    result = Show(second);
    words = Words();
    user.ClickToolbar("Exit");
  });
  EXPECT_EQ(Show(object), S_OK);
  EXPECT_EQ(result, static_cast<HRESULT>(0x800A0190));
  EXPECT_EQ(words, "窗体已显示，不能再以模态方式显示");
}

TEST_F(ComUserCtrl, AnotherThreadIsRefused) {
  const auto object = Make();
  Prepare(object);
  Scene([](headless::HeadlessUser& user) { user.ClickToolbar("Exit"); });
  EXPECT_EQ(Show(object), S_OK);
  HRESULT shown = S_OK;
  HRESULT ended = S_OK;
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    shown = Show(object);
    ended = EndServer();
    CoUninitialize();
  }).join();
  EXPECT_EQ(shown, RPC_E_WRONG_THREAD);
  EXPECT_EQ(ended, S_FALSE);
}

TEST_F(ComUserCtrl, OfTwoThreadsThatAskAtTheSameMomentOneHasTheServer) {
  constexpr int kRounds = 50;
  std::array<int, kRounds> servers{};
  std::atomic<int> arrived{0};
  std::mutex counting;
  const auto ask = [&] {
    int due = 0;
    const auto meet = [&] {
      due += 2;
      for (++arrived; arrived < due;) std::this_thread::yield();
    };
    for (int& server : servers) {
      meet();
      const bool mine = RequireServer();
      meet();
      if (!mine) continue;
      const std::lock_guard lock(counting);
      ++server;
      EXPECT_EQ(EndServer(), S_OK);
    }
  };
  std::thread other(ask);
  ask();
  other.join();
  EXPECT_EQ(std::count(servers.begin(), servers.end(), 1), kRounds);
}

TEST_F(ComUserCtrl, TheConnectionIsHeldUntilTheLibraryIsUnloaded) {
  auto object = Make();
  EXPECT_EQ(host_->References(), 1U);
  Prepare(object);
  EXPECT_EQ(host_->References(), 3U);
  Scene([](headless::HeadlessUser& user) { user.ClickToolbar("Exit"); });
  EXPECT_EQ(Show(object), S_OK);
  EXPECT_EQ(host_->References(), 3U);
  EXPECT_EQ(EndServer(), S_FALSE);
  object = {};
  EXPECT_EQ(host_->References(), 2U) << "the connection of the last visit";
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_EQ(host_->References(), 1U);
}

TEST_F(ComUserCtrl, AHostMayLetGoOfTheObjectInTheVisit) {
  auto object = Make();
  Prepare(object);
  _IUserCtrl* const raw = object.Get();
  Scene([&](headless::HeadlessUser& user) {
    object = {};
    user.ClickToolbar("Exit");
  });
  VARIANT_BOOL saved = VARIANT_TRUE;
  EXPECT_EQ(raw->ShowDossier(&saved), S_OK);
  EXPECT_EQ(EndServer(), S_OK) << "nothing of it is left";
}

TEST_F(ComUserCtrl, NullPointersAreRefused) {
  const auto object = Make();
  EXPECT_EQ(object->ShowDossier(nullptr), E_POINTER);
  EXPECT_EQ(object->get_Connection(nullptr), E_POINTER);
  EXPECT_EQ(object->get_personID(nullptr), E_POINTER);
  EXPECT_EQ(object->get_PersonType(nullptr), E_POINTER);
  EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ComUserCtrl, TellsThatItsFailuresHaveWords) {
  const auto object = Make();
  Pointer<ISupportErrorInfo> support;
  ASSERT_EQ(object->QueryInterface(IID_ISupportErrorInfo, support.PutVoid()), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(kInterface), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_FALSE);
}

TEST_F(ComUserCtrl, LocksAndFactoriesKeepTheLibraryLoaded) {
  Pointer<IClassFactory> factory;
  ASSERT_EQ(GetFactory(kClass, IID_IClassFactory, factory.PutVoid()), S_OK);
  EXPECT_EQ(EndServer(), S_FALSE);
  factory->LockServer(TRUE);
  IClassFactory* const locked = factory.Get();
  locked->AddRef();
  factory = {};
  EXPECT_EQ(EndServer(), S_FALSE);
  locked->LockServer(FALSE);
  locked->Release();
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_EQ(GetFactory(kInterface, IID_IClassFactory, factory.PutVoid()), CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(ComUserCtrl, IsNoPartOfAnotherObject) {
  Pointer<IClassFactory> factory;
  ASSERT_EQ(GetFactory(kClass, IID_IClassFactory, factory.PutVoid()), S_OK);
  Pointer<IUnknown> object;
  EXPECT_EQ(factory->CreateInstance(host_.Get(), IID_IUnknown, object.PutVoid()), CLASS_E_NOAGGREGATION);
}

}  // namespace
}  // namespace dossierkit::com
