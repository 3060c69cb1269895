// SaveTest: the open window, in which pages made by hand are saved.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/metadata/scratch_page.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {

using Statements = std::vector<std::string>;
using Lines = std::vector<std::string>;

class SaveTest : public ::testing::Test {
 protected:
  // Plays the scene in the window, which shows the sample person; what reached the database before is
  // forgotten.
  void InWindow(const std::function<void()>& scene) {
    bool played = false;
    visit.OpenPerson(kPerson, [&] {
      visit.statements.clear();
      scene();
      played = true;
    });
    EXPECT_TRUE(played);
  }

  bool Save(const std::shared_ptr<ScratchPage>& page) { return visit.Window().Save(*page); }

  // The one message box shown so far.
  headless::Message TheMessage() const {
    EXPECT_EQ(visit.script.messages.size(), 1U);
    return visit.script.messages.empty() ? headless::Message() : visit.script.messages.back();
  }
  void ExpectMessage(const std::string& text, const std::string& title) const {
    EXPECT_EQ(TheMessage().text, text);
    EXPECT_EQ(TheMessage().flags, 0);
    EXPECT_EQ(TheMessage().title, title);
  }
  // The one box, with a description in the engine's own words.
  void ExpectTrapped() const {
    EXPECT_NE(TheMessage().text, "");
    EXPECT_EQ(TheMessage().flags, 0);
    EXPECT_EQ(TheMessage().title, "信息保存");
  }

  std::string One(const std::string& query) { return tests::One(*visit.database, query); }
  Lines Rows(const std::string& query) { return tests::Rows(*visit.database, query); }

  Visit visit;
};

}  // namespace dossierkit::tests
