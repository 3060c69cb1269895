// Visits whose host does what hosts should not: its connection breaks, goes or is exchanged while the window
// is open, it calls from its own events, and it hands over what is no person and no folder.
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>

#include "platform/environment/failure.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/text_box.h"
#include "tests/adapters/com/library.h"

namespace dossierkit::com {
namespace {

using environment::Failure;
using headless::HeadlessUser;
using headless::Message;

constexpr HRESULT Result(unsigned long bits) { return static_cast<HRESULT>(bits); }

class ComVisits : public Library {
 protected:
  ComVisits() { Prepare(object_); }

  HRESULT Show() {
    saved_ = VARIANT_TRUE;
    return object_->ShowDossier(&saved_);
  }
  HRESULT Show(const std::function<void(HeadlessUser&)>& scene) {
    Scene(scene);
    return Show();
  }
  // A visit as it should be, with nothing left of what happened before.
  void ExpectTheNextVisitWorks() {
    host_->on_call = nullptr;
    Prepare(object_);
    object_->put_PhotoPath(nullptr);
    bool shown = false;
    EXPECT_EQ(Show([&](HeadlessUser& user) {
                shown = true;
                user.ClickToolbar("Exit");
              }),
              S_OK);
    EXPECT_TRUE(shown);
    EXPECT_EQ(saved_, VARIANT_FALSE);
    EXPECT_EQ(host_->References(), 3U) << "the test's, the object's, the visit's";
  }

  Pointer<_IUserCtrl> object_ = Make();
  VARIANT_BOOL saved_ = VARIANT_TRUE;
};

TEST_F(ComVisits, EachFailureHasItsNumberItsSourceAndItsWords) {
  const std::map<int, unsigned long> numbers = {
      {5, 0x800A0005},           {6, 0x800A0006},           {9, 0x800A0009},
      {13, 0x800A000D},          {53, 0x800A0035},          {70, 0x800A0046},
      {75, 0x800A004B},          {76, 0x800A004C},          {94, 0x800A005E},
      {364, 0x800A016C},         {400, 0x800A0190},         {457, 0x800A01C9},
      {481, 0x800A01E1},         {731, 0x800A02DB},         {3021, 0x800A0BCD},
      {3265, 0x800A0CC1},        {3704, 0x800A0E78},        {3709, 0x800A0E7D},
      {-2147217865, 0x80040E37}, {-2147217904, 0x80040E10}, {-2147217900, 0x80040E14},
      {-2147217913, 0x80040E07}, {-2147467259, 0x80004005}};
  for (const auto& [number, result] : numbers) {
    host_->on_call = [number = number](const std::string&) {
      throw Failure(number, "第" + std::to_string(number) + "号");
    };
    EXPECT_EQ(Show(), Result(result)) << number;
    EXPECT_EQ(saved_, VARIANT_FALSE);
    Pointer<IErrorInfo> told;
    ASSERT_EQ(GetErrorInfo(0, told.Put()), S_OK);
    Bstr source;
    Bstr words;
    GUID raiser{};
    told->GetSource(source.Put());
    told->GetDescription(words.Put());
    told->GetGUID(&raiser);
    EXPECT_EQ(TextOf(source.Get()), "DossierKit.IUserCtrl");
    EXPECT_EQ(TextOf(words.Get()), "第" + std::to_string(number) + "号");
    EXPECT_EQ(raiser, kInterface);
  }
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, ASetWithoutAPageEndsTheVisit) {
  object_->put_PersonType(2);
  EXPECT_EQ(Show([](HeadlessUser& user) { GoTo(user, "B02"); }), Result(0x800A02DB));
  EXPECT_NE(Words(), "");
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, AHostMayCloseItsConnectionInTheVisit) {
  EXPECT_EQ(Show([&](HeadlessUser& user) {
              database_->Close();
              GoTo(user, "A04");
            }),
            Result(0x800A0E7D));
  EXPECT_EQ(Words(), "连接无法用于执行此操作。在此上下文中它可能已被关闭或无效。");
  database_ = tests::SampleDatabase();
  host_ = {};
  *host_.Put() = new StandInConnection(database_);
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, ASaveOnAConnectionThatWasClosedIsToldAndTheWindowStays) {
  bool left = false;
  EXPECT_EQ(Show([&](HeadlessUser& user) {
              user.Find<toolkit::TextBox>("A01_A0110_v")->SetText("水稻育种");
              database_->Close();
              user.ClickToolbar("Save");
              Views()->WillAnswer(toolkit::kAnswerNo);
              user.ClickToolbar("Exit");
              left = true;
            }),
            S_OK);
  EXPECT_TRUE(left);
  EXPECT_EQ(saved_, VARIANT_FALSE);
  ASSERT_EQ(Views()->messages.size(), 2U);
  EXPECT_EQ(Views()->messages[0],
            (Message{"连接无法用于执行此操作。在此上下文中它可能已被关闭或无效。", 0, "信息保存"}));
}

TEST_F(ComVisits, AHostMayReleaseItsConnectionAndItsObjectInTheVisit) {
  std::weak_ptr<tests::Database> alive = database_;
  _IUserCtrl* const raw = object_.Get();
  Scene([&](HeadlessUser& user) {
    host_ = {};
    object_ = {};
    database_ = nullptr;
    EXPECT_FALSE(alive.expired());
    GoTo(user, "A04");
    user.Find<toolkit::TextBox>("A04_A0404_v")->SetText("理事长");
    user.ClickToolbar("Save");
    user.ClickToolbar("Exit");
  });
  EXPECT_EQ(raw->ShowDossier(&saved_), S_OK);
  EXPECT_EQ(saved_, VARIANT_TRUE);
  EXPECT_FALSE(alive.expired()) << "the connection of the last visit";
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_TRUE(alive.expired());
}

TEST_F(ComVisits, AnotherConnectionIsOfTheNextVisit) {
  const auto other_database = tests::SampleDatabase();
  Pointer<StandInConnection> other;
  *other.Put() = new StandInConnection(other_database);
  EXPECT_EQ(Show([&](HeadlessUser& user) {
              EXPECT_EQ(object_->putref_Connection(other.Get()), S_OK);
              GoTo(user, "A04");
              EXPECT_EQ(other->calls, 0);
              EXPECT_EQ(host_->References(), 2U) << "the test's and the visit's";
              user.ClickToolbar("Exit");
            }),
            S_OK);
  EXPECT_EQ(Show([](HeadlessUser& user) { user.ClickToolbar("Exit"); }), S_OK);
  EXPECT_GT(other->calls, 0);
  EXPECT_EQ(host_->References(), 1U);
}

TEST_F(ComVisits, AHostThatCallsFromItsOwnEventsIsRefusedAndTheVisitGoesOn) {
  HRESULT shown = S_OK;
  HRESULT ended = S_OK;
  std::string words;
  const int calls = 3;
  int left = calls;
  EXPECT_EQ(Show([&](HeadlessUser& user) {
              host_->on_call = [&](const std::string&) {
                if (--left != 0) return;
                const auto second = Make();
                Prepare(second);
                VARIANT_BOOL saved = VARIANT_TRUE;
                shown = second->ShowDossier(&saved);
                words = Words();
                EXPECT_EQ(saved, VARIANT_FALSE);
                ended = EndServer();
              };
              GoTo(user, "A04");
              EXPECT_EQ(user.Find<toolkit::Label>("labOpt")->Caption(), "当前操作：修改");
              user.ClickToolbar("Exit");
            }),
            S_OK);
  EXPECT_LT(left, 0);
  EXPECT_EQ(shown, Result(0x800A0190));
  EXPECT_EQ(words, "窗体已显示，不能再以模态方式显示");
  EXPECT_EQ(ended, S_FALSE) << "CoFreeUnusedLibraries in a visit unloads nothing";
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, AnEventOfTheHostThatFailsEndsTheVisitWithItsWords) {
  EXPECT_EQ(Show([&](HeadlessUser& user) {
              host_->on_call = [](const std::string& member) {
                if (member == "GetRows") throw Failure(1004, "主机的事件失败了");
              };
              GoTo(user, "A04");
            }),
            Result(0x800A03EC));
  EXPECT_EQ(Words(), "主机的事件失败了");
  ExpectTheNextVisitWorks();
}

// ADODB.Connection as a class of this program, whatever the machine has by that name.
class Ado : public IClassFactory {
 public:
  Ado() {
    CLSID known;
    EXPECT_EQ(CLSIDFromProgID(L"ADODB.Connection", &known), S_OK);
    EXPECT_EQ(CoRegisterClassObject(known, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registered_),
              S_OK);
  }
  virtual ~Ado() { CoRevokeClassObject(registered_); }
  Ado(const Ado&) = delete;
  Ado& operator=(const Ado&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    *object = wanted == IID_IUnknown || wanted == IID_IClassFactory ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID wanted, void** object) override {
    ++made;
    Pointer<IDispatch> connection;
    *connection.Put() = new StandInConnection(std::make_shared<ado::UnopenedConnection>());
    return connection->QueryInterface(wanted, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  int made = 0;

 private:
  DWORD registered_ = 0;
};

TEST_F(ComVisits, WithoutAConnectionTheComponentMakesOneThatIsNotOpen) {
  struct Com {
    Com() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Com() { CoUninitialize(); }
  } com;
  Ado ado;
  EXPECT_EQ(object_->putref_Connection(nullptr), S_OK);
  EXPECT_EQ(host_->References(), 1U);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Show(), Result(0x800A0E7D));
    EXPECT_EQ(Words(), "连接无法用于执行此操作。在此上下文中它可能已被关闭或无效。");
    EXPECT_EQ(saved_, VARIANT_FALSE);
  }
  EXPECT_EQ(ado.made, 1) << "and kept";
  Pointer<IDispatch> connection;
  EXPECT_EQ(object_->get_Connection(connection.Put()), S_OK);
  EXPECT_TRUE(connection);
  EXPECT_EQ(ado.made, 1);
  connection = {};
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, AConnectionThatCannotBeMadeIsTold) {
  // This thread has not begun COM.
  EXPECT_EQ(object_->putref_Connection(nullptr), S_OK);
  EXPECT_EQ(Show(), Result(0x800A01AD));
  EXPECT_EQ(Words(), "ActiveX 部件不能创建对象");
  Pointer<IDispatch> connection;
  EXPECT_EQ(object_->get_Connection(connection.Put()), Result(0x800A01AD));
  EXPECT_FALSE(connection);
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, APersonWithANulIsNobodyAndNothingOfTheDatabaseIsTouched) {
  const std::string before = database_->Bytes();
  object_->put_personID(Bstr(std::string("47EAA099\0-2CB6", 14)).Get());
  EXPECT_EQ(Show(), Result(0x80040E14)) << "a statement that is no SQL";
  EXPECT_NE(Words(), "");
  EXPECT_EQ(database_->Bytes(), before);
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, AVeryLongPersonIsNobody) {
  object_->put_personID(Bstr(std::string(1'000'000, 'x')).Get());
  EXPECT_EQ(Show(), Result(0x800A016C));
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, APathThatNoFileCanHaveIsAFolderWithoutPhotographs) {
  for (const std::string& path : {"C:\\" + std::string(40'000, 'x'), std::string("C:\\a\0b", 6),
                                  std::string("\\\\?\\"), std::string(":*?")}) {
    object_->put_PhotoPath(Bstr(path).Get());
    EXPECT_EQ(Show([](HeadlessUser& user) { user.ClickToolbar("Exit"); }), S_OK) << path.substr(0, 10);
  }
  EXPECT_TRUE(Views()->messages.empty());
  ExpectTheNextVisitWorks();
}

TEST_F(ComVisits, AnotherThreadHasTheNextVisitOnceTheFirstHasEnded) {
  HRESULT first = E_FAIL;
  std::thread([&] { first = Show([](HeadlessUser& user) { user.ClickToolbar("Exit"); }); }).join();
  EXPECT_EQ(first, S_OK);
  EXPECT_EQ(EndServer(), S_FALSE);
  bool shown = false;
  OnViews([&](headless::HeadlessPlatform& views) { views.WillRun([&](toolkit::Form&) { shown = true; }); });
  EXPECT_EQ(Show(), S_OK);
  EXPECT_TRUE(shown);
  object_ = {};
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_EQ(host_->References(), 2U) << "what belonged to the thread that ended is not touched";
}

// A connection whose end frees libraries, as a host's object may.
class FreesLibraries : public StandInConnection {
 public:
  FreesLibraries(const std::shared_ptr<ado::Connection>& connection, HRESULT& result)
      : StandInConnection(connection), result_(result) {}
  ~FreesLibraries() override { result_ = EndServer(); }

 private:
  HRESULT& result_;
};

TEST_F(ComVisits, AConnectionMayFreeLibrariesAtItsEnd) {
  HRESULT result = S_OK;
  *host_.Put() = new FreesLibraries(database_, result);
  Prepare(object_);
  EXPECT_EQ(Show([](HeadlessUser& user) { user.ClickToolbar("Exit"); }), S_OK);
  object_ = {};
  host_ = {};
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_EQ(result, S_FALSE) << "not while the library is at work";
}

TEST_F(ComVisits, AHundredVisitsLeaveNoMoreBehindThanOne) {
  const auto visit = [&] { EXPECT_EQ(Show([](HeadlessUser& user) { user.ClickToolbar("Exit"); }), S_OK); };
  visit();
  const int living = LateObject::Living();
  for (int i = 0; i < 99; ++i) visit();
  EXPECT_EQ(LateObject::Living(), living);
  EXPECT_EQ(host_->References(), 3U);
  object_ = {};
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_EQ(LateObject::Living(), living_ + 1) << "the host's own";
}

}  // namespace
}  // namespace dossierkit::com
