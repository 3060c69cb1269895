// The component of this program as COM knows it, without a registry: its class factory is asked for directly.
#pragma once

#include <dossierkit_com.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "adapters/com/class_factory.h"
#include "adapters/com/identifiers.h"
#include "adapters/com/pointers.h"
#include "adapters/com/server.h"
#include "adapters/headless/headless_platform.h"
#include "adapters/headless/headless_user.h"
#include "tests/adapters/com/stand_in.h"
#include "tests/support/database.h"

namespace dossierkit::com {

// The views that the server was given last; null before the first visit and after the end.
headless::HeadlessPlatform* Views();
// What is done with the views when they are made.
void OnViews(std::function<void(headless::HeadlessPlatform&)> prepare);

class Library : public testing::Test {
 protected:
  Library();
  ~Library() override;

  // A new object, bound early and late.
  Pointer<_IUserCtrl> Make();
  // A host's connection to a fresh copy of the sample database; one reference is the test's.
  Pointer<StandInConnection> Host() { return host_; }
  // What happens in the window of the next visit.
  void Scene(std::function<void(headless::HeadlessUser&)> scene);
  // Sets an object up for the person of the sample.
  void Prepare(const Pointer<_IUserCtrl>& object);
  // Clicks the item of a set in the menu, as in "A03".
  static void GoTo(headless::HeadlessUser& user, const std::string& set);
  // The description that the last failed call left, or empty.
  static std::string Words();

  // Of other tests.
  const int living_ = LateObject::Living();
  std::shared_ptr<tests::Database> database_ = tests::SampleDatabase();
  Pointer<StandInConnection> host_;
};

// The person of the sample that visits are of.
inline constexpr char kPerson[] = "47EAA099-2CB6-416D-A6DC-283CF0480FF9";

}  // namespace dossierkit::com
