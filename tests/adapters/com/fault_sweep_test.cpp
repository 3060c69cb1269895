// A whole visit through the objects of a host, of which each call fails once: the user or the host is told,
// the database holds what ran before the failure and nothing else, nothing is held, and the next visit works.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/ado/tracing_connection.h"
#include "platform/environment/failure.h"
#include "platform/toolkit/controls/text_box.h"
#include "tests/adapters/com/library.h"
#include "tests/support/visit.h"

namespace dossierkit::com {
namespace {

using environment::Failure;
using headless::HeadlessUser;
using headless::Message;
using Texts = std::vector<std::string>;

const std::string kBroken = "磁盘或网络错误。";
constexpr HRESULT kBrokenResult = static_cast<HRESULT>(0x80004005UL);

// What became of a visit whose call number n failed; 0 is the visit as it should be.
struct Outcome {
  HRESULT result = S_OK;
  VARIANT_BOOL saved = VARIANT_TRUE;
  std::string words;
  std::vector<Message> messages;
  Texts ran;                // statements that the database ran
  std::vector<int> before;  // for each of the statements how many calls there were before it
  int calls = 0;
  int save_from = 0;  // the first call of the Save and the last one
  int save_to = 0;
  bool failed = false;
  Texts rows;  // of the database, when all was over
};

Texts AllRows(ado::Connection& database) {
  Texts all;
  for (const char* set : {"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A12", "A13",
                          "A14", "A15", "A21", "B01"}) {
    for (const std::string& row : tests::Rows(database, std::string("select * from ") + set))
      all.push_back(set + (": " + row));
  }
  std::ranges::sort(all);
  return all;
}

class ComFaultSweep : public testing::Test {
 protected:
  // The visits of one sweep are of a host each, and of a library that was just loaded.
  class Host : public Library {
   public:
    void TestBody() override {}
    Outcome Play(int n);

   private:
    void Visit(HeadlessUser& user, Outcome& outcome);
  };
};

// A set of many records is corrected and saved, a record is deleted, another one begun, and the window left.
void ComFaultSweep::Host::Visit(HeadlessUser& user, Outcome& outcome) {
  const std::vector<std::function<void()>> steps = {
      [&] { GoTo(user, "A04"); },
      [&] {
        user.Find<toolkit::TextBox>("A04_A0404_v")->SetText("理事长");
        user.ClickToolbar("Save");
        // The Save itself begins with the row that it replaces and ends with the last new number.
        for (std::size_t i = 0; i < outcome.ran.size(); ++i) {
          if (outcome.ran[i].starts_with("delete from A04")) outcome.save_from = outcome.before[i] + 1;
          if (outcome.ran[i].starts_with("update A04 set A0499")) outcome.save_to = outcome.before[i] + 1;
        }
      },
      [&] { GoTo(user, "A11"); },
      [&] { user.ClickRow(2); },
      [&] {
        Views()->WillAnswer(toolkit::kAnswerYes);
        user.ClickToolbar("Delete");
      },
      [&] { user.ClickToolbar("Add"); },
      [&] { user.ClickToolbar("Exit"); }};
  for (const auto& step : steps) {
    step();
    if (!outcome.failed) continue;
    if (Views()->messages.empty() || Views()->messages.back().text != kBroken) return;  // the window is gone
    // What is told in a box leaves the window open: the user gives up.
    Views()->WillAnswer(toolkit::kAnswerNo);
    return user.ClickToolbar("Exit");
  }
}

Outcome ComFaultSweep::Host::Play(int n) {
  Outcome outcome;
  auto object = Make();
  host_ = {};
  const auto traced = std::make_shared<ado::TracingConnection>(database_, [&](const ado::Trace& trace) {
    if (host_->on_call) outcome.ran.push_back(trace.statement);
  });
  *host_.Put() = new StandInConnection(traced);
  Prepare(object);
  host_->on_call = [&](const std::string& member) {
    if (host_->calls == n) {
      outcome.failed = true;
      throw Failure(environment::kEngineFailure, kBroken);
    }
    if (member == "Execute") outcome.before.push_back(host_->calls - 1);
  };
  // A visit that fails before its window shows leaves its scene to the next one.
  std::function<void(HeadlessUser&)> scene = [&](HeadlessUser& user) { Visit(user, outcome); };
  Scene([&](HeadlessUser& user) { scene(user); });
  outcome.result = object->ShowDossier(&outcome.saved);
  outcome.words = Words();
  outcome.calls = host_->calls;
  outcome.messages = Views()->messages;
  outcome.rows = AllRows(*database_);
  EXPECT_EQ(host_->References(), 3U);
  EXPECT_EQ(LateObject::Living(), living_ + 1) << "no recordset is held";

  // The next visit works.
  host_->on_call = nullptr;
  bool shown = false;
  scene = [&](HeadlessUser& user) {
    shown = true;
    GoTo(user, "A03");
    user.ClickToolbar("Exit");
  };
  Scene([&](HeadlessUser& user) { scene(user); });
  VARIANT_BOOL saved = VARIANT_TRUE;
  EXPECT_EQ(object->ShowDossier(&saved), S_OK);
  EXPECT_TRUE(shown);
  EXPECT_EQ(saved, VARIANT_FALSE);
  object = {};
  EXPECT_EQ(host_->References(), 2U);
  EXPECT_EQ(EndServer(), S_OK);
  EXPECT_EQ(host_->References(), 1U);
  return outcome;
}

TEST_F(ComFaultSweep, OfAWholeVisit) {
  const Outcome whole = Host().Play(0);
  ASSERT_EQ(whole.result, S_OK);
  EXPECT_EQ(whole.saved, VARIANT_TRUE);
  EXPECT_EQ(whole.messages, (std::vector<Message>{{"是否删除此条记录？", 4, "人员维护"}}));
  ASSERT_GT(whole.save_to, whole.save_from);

  // The copy takes the statements of the whole visit, one behind the other.
  const auto copy = tests::SampleDatabase();
  Texts expected = AllRows(*copy);
  std::size_t ran = 0;
  for (int n = 1; n <= whole.calls; ++n) {
    // A statement ran where its call itself did not fail.
    while (ran < whole.ran.size() && whole.before[ran] + 1 < n) {
      copy->Run(whole.ran[ran]);
      if (!whole.ran[ran].starts_with("select") && !whole.ran[ran].starts_with("SELECT"))
        expected = AllRows(*copy);
      ++ran;
    }
    SCOPED_TRACE("call " + std::to_string(n) + ", behind " + (ran ? whole.ran[ran - 1] : "nothing"));
    const Outcome broken = Host().Play(n);
    EXPECT_TRUE(broken.failed);
    EXPECT_EQ(broken.ran, Texts(whole.ran.begin(), whole.ran.begin() + static_cast<std::ptrdiff_t>(ran)));
    EXPECT_EQ(broken.rows, expected);
    const bool in_save = n >= whole.save_from && n <= whole.save_to;
    if (in_save) {
      // Told to the user; the window stayed.
      EXPECT_EQ(broken.result, S_OK);
      EXPECT_EQ(broken.saved, VARIANT_FALSE);
      EXPECT_EQ(broken.messages, (std::vector<Message>{{kBroken, 0, "信息保存"},
                                                       {"数据被修改但未保存，是否保存？", 4, "人员维护"}}));
    } else {
      EXPECT_EQ(broken.result, kBrokenResult);
      EXPECT_EQ(broken.words, kBroken);
      EXPECT_EQ(broken.saved, VARIANT_FALSE);
      EXPECT_LE(broken.messages.size(), whole.messages.size());
    }
    if (HasFailure()) return;  // one report is enough
  }
  EXPECT_FALSE(Host().Play(whole.calls + 1).failed);
}

}  // namespace
}  // namespace dossierkit::com
