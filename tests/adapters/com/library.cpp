#include "tests/adapters/com/library.h"

#include <dossierkit_com.h>

#include <utility>

#include "shell/frm_dossier.h"
#include "visit/runtime.h"

namespace dossierkit::com {
namespace {

headless::HeadlessPlatform* views = nullptr;
std::function<void(headless::HeadlessPlatform&)> on_views;

class WatchedViews : public headless::HeadlessPlatform {
 public:
  WatchedViews() {
    views = this;
    if (on_views) std::exchange(on_views, nullptr)(*this);
  }
  ~WatchedViews() override { views = nullptr; }
};

}  // namespace

std::unique_ptr<toolkit::Platform> MakePlatform() { return std::make_unique<WatchedViews>(); }

headless::HeadlessPlatform* Views() { return views; }

void OnViews(std::function<void(headless::HeadlessPlatform&)> prepare) { on_views = std::move(prepare); }

Library::Library() { *host_.Put() = new StandInConnection(database_); }

Library::~Library() {
  EXPECT_EQ(EndServer(), S_OK) << "something keeps the library loaded";
  EXPECT_EQ(views, nullptr);
}

Pointer<_IUserCtrl> Library::Make() {
  Pointer<IClassFactory> factory;
  EXPECT_EQ(GetFactory(kClass, IID_IClassFactory, factory.PutVoid()), S_OK);
  Pointer<_IUserCtrl> object;
  EXPECT_EQ(factory->CreateInstance(nullptr, kInterface, object.PutVoid()), S_OK);
  return object;
}

void Library::Scene(std::function<void(headless::HeadlessUser&)> scene) {
  const auto prepare = [scene](headless::HeadlessPlatform& platform) {
    platform.WillRun([scene](toolkit::Form&) {
      headless::HeadlessUser user(TheRuntime().desktop);
      scene(user);
    });
  };
  if (views) {
    prepare(*views);
  } else {
    OnViews(prepare);
  }
}

void Library::Prepare(const Pointer<_IUserCtrl>& object) {
  EXPECT_EQ(object->putref_Connection(host_.Get()), S_OK);
  EXPECT_EQ(object->put_OperationType(3), S_OK);
  EXPECT_EQ(object->put_PersonType(1), S_OK);
  EXPECT_EQ(object->put_personID(Bstr(kPerson).Get()), S_OK);
}

void Library::GoTo(headless::HeadlessUser& user, const std::string& set) {
  const auto& items = TheRuntime().window->VMenu1().Items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].key == set) return user.ClickMenu(static_cast<int>(i + 1));
  }
  FAIL() << "no set " << set;
}

std::string Library::Words() {
  Pointer<IErrorInfo> told;
  if (GetErrorInfo(0, told.Put()) != S_OK) return {};
  Bstr words;
  told->GetDescription(words.Put());
  return TextOf(words.Get());
}

}  // namespace dossierkit::com
