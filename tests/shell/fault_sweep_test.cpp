// Every command of the window with the connection failing at its k-th statement, for every k: the
// database then holds what the statements before it wrote and nothing else, the user was told what he
// has to be told, and the next visit works.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using environment::Failure;
using headless::Message;
using toolkit::kAnswerNo;
using toolkit::kAnswerYes;
using Texts = std::vector<std::string>;

const std::string kBroken = "磁盘或网络错误。";

enum class Person { kStored, kNew };

struct Command {
  const char* name;
  Person person = Person::kStored;
  std::string script = {};  // on the database, before the visit
  // What the user does before the connection breaks, and with it; without `act` the visit itself is it.
  std::function<void(Visit&)> prepare = {};
  std::function<void(Visit&)> act = {};
  std::vector<Message> messages = {};  // of the run without a failure
  bool saved = false;                  // its result
  bool closes = false;                 // it closes the window
  // The first and the last statement that run inside Save, by how they begin; none: Save is not called.
  std::string save_from = {};
  std::string save_to = {};
  bool save_is_ignored = false;  // a Save that failed does not stop the command
};

// What a run left behind.
struct Outcome {
  Texts before;      // the statements of the visit up to the command
  Texts statements;  // since the connection was to break
  std::vector<Message> messages;
  bool failed = false;  // the failing statement was reached
  bool saved = false;
  std::string thrown;           // the description of the failure that left ShowDossier
  bool open_after_act = false;  // the window stood open behind the command
  bool loaded_after = false;    // after ShowDossier
  std::shared_ptr<Database> database;
};

bool IsRead(const std::string& statement) {
  return statement.starts_with("select ") || statement.starts_with(" select ") ||
         statement.starts_with("SELECT ");
}

// All rows of all tables that are not code tables, with identifiers that were drawn meanwhile made equal.
Texts Dump(Database& database, const std::set<std::string>& known) {
  static const Texts sets = {"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09",
                             "A10", "A11", "A12", "A13", "A14", "A15", "A21", "B01"};
  Texts dump;
  for (const auto& set : sets) {
    for (const auto& row : Rows(database, "select * from " + set)) {
      const std::string person = row.substr(0, row.find('|'));
      dump.push_back(set + ": " + (known.contains(person) ? person : "<drawn>") + row.substr(person.size()));
    }
  }
  for (const auto& val : Column(database, "select val from S_GUID")) dump.push_back("S_GUID: " + val);
  for (const char* table : {"s_infotable", "s_infoitem", "s_CodeTableDefine", "s_CodeLevDefine"}) {
    for (const auto& row : Rows(database, std::string("select * from ") + table))
      dump.push_back(table + (": " + row));
  }
  std::ranges::sort(dump);
  return dump;
}

// Tells of the rows that only one of two databases holds.
void ExpectSame(const Texts& broken, const Texts& copy) {
  Texts only_broken;
  Texts only_copy;
  std::ranges::set_difference(broken, copy, std::back_inserter(only_broken));
  std::ranges::set_difference(copy, broken, std::back_inserter(only_copy));
  EXPECT_EQ(only_broken, only_copy);
}

std::set<std::string> KnownPersons() {
  const auto sample = SampleDatabase();
  const auto persons = Column(*sample, "select A00 from A01");
  return {persons.begin(), persons.end()};
}

// Plays the command; with k above 0 its k-th statement fails.
Outcome Play(const Command& command, std::size_t k) {
  Visit visit;
  if (!command.script.empty()) visit.database->RunScript(command.script);
  Outcome outcome;
  std::size_t from = 0;
  const auto scene = [&] {
    if (!command.act) return;
    if (command.prepare) command.prepare(visit);
    from = visit.statements.size();
    visit.failing->FailAt(k);
    command.act(visit);
    outcome.open_after_act = visit.Window().Loaded() && !visit.Window().LoopEnded();
    outcome.failed = visit.failing->HasFailed();
    visit.failing->FailAt(0);
  };
  if (!command.act) visit.failing->FailAt(k);
  try {
    outcome.saved = command.person == Person::kNew ? visit.OpenNew(scene) : visit.OpenPerson(kPerson, scene);
  } catch (const std::exception& failure) {
    outcome.thrown = failure.what();
  }
  outcome.before.assign(visit.statements.begin(),
                        visit.statements.begin() + static_cast<std::ptrdiff_t>(from));
  outcome.statements.assign(visit.statements.begin() + static_cast<std::ptrdiff_t>(from),
                            visit.statements.end());
  if (!command.act) outcome.failed = visit.failing->HasFailed();
  outcome.messages = visit.script.messages;
  outcome.loaded_after = visit.Window().Loaded();
  outcome.database = visit.database;
  visit.failing->FailAt(0);
  // The next visit works.
  visit.script.messages.clear();
  const bool next = visit.OpenPerson("56670B14-1509-4B0A-8BF1-3331CA118783", [&] {
    EXPECT_EQ(visit.Focus(), "A01_A0101_v");
    visit.GoTo("A03");
    EXPECT_EQ(visit.Focus(), "A03_A0301_v");
  });
  EXPECT_FALSE(next);
  EXPECT_TRUE(visit.script.messages.empty());
  return outcome;
}

// Whether statement number k (from 1) of the run without a failure is one of Save's.
bool InSave(const Command& command, const Texts& statements, std::size_t k) {
  if (command.save_from.empty()) return false;
  const auto first =
      std::ranges::find_if(statements, [&](const auto& s) { return s.starts_with(command.save_from); });
  auto last = first;
  for (auto s = first; s != statements.end(); ++s) {
    if (s->starts_with(command.save_to)) last = s;
  }
  const auto at = statements.begin() + static_cast<std::ptrdiff_t>(k - 1);
  return first != statements.end() && at >= first && at <= last;
}

void Sweep(const Command& command) {
  SCOPED_TRACE(command.name);
  const auto known = KnownPersons();
  const Outcome whole = Play(command, 0);
  EXPECT_EQ(whole.thrown, "");
  EXPECT_EQ(whole.saved, command.saved);
  EXPECT_EQ(whole.messages, command.messages);
  if (command.act) {
    EXPECT_EQ(whole.open_after_act, !command.closes);
  }
  ASSERT_FALSE(whole.statements.empty());
  // The copy takes the statements of the run without a failure, one behind the other.
  const auto copy = SampleDatabase();
  if (!command.script.empty()) copy->RunScript(command.script);
  for (const std::string& statement : whole.before) copy->Run(statement);
  Texts expected = Dump(*copy, known);
  for (std::size_t k = 1; k <= whole.statements.size(); ++k) {
    const std::string& statement = whole.statements[k - 1];
    SCOPED_TRACE("statement " + std::to_string(k) + ": " + statement);
    const Outcome broken = Play(command, k);
    EXPECT_TRUE(broken.failed);
    EXPECT_FALSE(broken.loaded_after);
    ExpectSame(Dump(*broken.database, known), expected);
    if (InSave(command, whole.statements, k)) {
      // Told in a box; the window stays.
      EXPECT_EQ(broken.thrown, "");
      EXPECT_FALSE(broken.saved);
      EXPECT_TRUE(broken.open_after_act);
      EXPECT_EQ(std::ranges::count(broken.messages, Message{kBroken, 0, "信息保存"}), 1);
      if (!command.save_is_ignored) {
        EXPECT_EQ(broken.statements.size(), k);
        EXPECT_EQ(broken.messages.back(), (Message{kBroken, 0, "信息保存"}));
      }
    } else {
      // Thrown to the host without a box; the window is gone.
      EXPECT_EQ(broken.thrown, kBroken);
      EXPECT_FALSE(broken.open_after_act);
      EXPECT_EQ(broken.statements.size(), k);
      EXPECT_EQ(std::ranges::count(broken.messages, Message{kBroken, 0, "信息保存"}), 0);
      EXPECT_LE(broken.messages.size(), whole.messages.size());
      for (std::size_t i = 0; i < broken.messages.size(); ++i)
        EXPECT_EQ(broken.messages[i], whole.messages[i]);
    }
    if (::testing::Test::HasFailure()) return;  // one report is enough
    copy->Run(statement);
    if (!IsRead(statement)) expected = Dump(*copy, known);
  }
  EXPECT_FALSE(Play(command, whole.statements.size() + 1).failed);
}

Command ClickOn(const char* name, const char* set, const std::string& script = {}) {
  return {.name = name, .script = script, .act = [set](Visit& visit) { visit.GoTo(set); }};
}

TEST(FaultSweep, OpeningAStoredPerson) { Sweep({.name = "open"}); }

TEST(FaultSweep, OpeningANewPerson) { Sweep({.name = "open new", .person = Person::kNew}); }

TEST(FaultSweep, ClickOnASetOfOneRecord) { Sweep(ClickOn("A13", "A13")); }

TEST(FaultSweep, ClickOnASetOfManyRecords) { Sweep(ClickOn("A03", "A03")); }

TEST(FaultSweep, ClickOnAnEmptySetOfOneRecord) {
  Sweep(ClickOn("A12", "A12", "delete from A12 where A00='" + kPerson + "'"));
}

TEST(FaultSweep, ClickOnAnEmptySetOfManyRecords) {
  Sweep(ClickOn("A05", "A05", "delete from A05 where A00='" + kPerson + "'"));
}

TEST(FaultSweep, ClickOnTheRecommendation) { Sweep(ClickOn("B01", "B01")); }

TEST(FaultSweep, ClickOnAnotherSetWithEditsThatAreToBeSaved) {
  Sweep({.name = "leave A04",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A04");
               visit.Text("A04_A0404").SetText("理事长");
               visit.script.WillAnswer(kAnswerYes);
             },
         .act = [](Visit& visit) { visit.GoTo("A12"); },
         .messages = {{"数据被修改且未保存，是否保存？", 4, "人员维护"}},
         .save_from = "delete from A04",
         .save_to = "update A04 set A0499"});
}

TEST(FaultSweep, AddInASetOfManyRecords) {
  Sweep({.name = "add",
         .prepare = [](Visit& visit) { visit.GoTo("A04"); },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Add"); }});
}

TEST(FaultSweep, AddOfANewPerson) {
  Sweep({.name = "add A01", .act = [](Visit& visit) { visit.user.ClickToolbar("Add"); }});
}

TEST(FaultSweep, AddWithEditsThatAreToBeSaved) {
  Sweep({.name = "add with edits",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A03");
               visit.Text("A03_A0302").SetText("新单位");
               visit.script.WillAnswer(kAnswerYes);
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Add"); },
         .messages = {{"数据被修改且未保存，是否保存？", 4, "DossierKit"}},
         .save_from = "delete from A03",
         .save_to = "update A03 set A0399"});
}

TEST(FaultSweep, SaveOfAStoredPerson) {
  Sweep({.name = "update",
         .prepare = [](Visit& visit) { visit.Text("A01_A0110").SetText("水稻育种"); },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Save"); },
         .saved = true,
         .save_from = "update A01 set",
         .save_to = "select iif(a0101 is null"});
}

TEST(FaultSweep, SaveOfANewPerson) {
  Sweep({.name = "insert",
         .person = Person::kNew,
         .prepare =
             [](Visit& visit) {
               visit.Text("A01_A0101").SetText("新人");
               visit.EnterCode("A01_A0102", "1");
               visit.EnterCode("A01_A0103", "01");
               visit.EnterCode("A01_A0106", "11");
               visit.Masked("A01_A0104").SetText("1980年01月02日");
               visit.Text("A01_A0110").SetText("育种");
               visit.Text("A01_A0115").SetText("研究所");
               visit.Text("A01_A0131").SetText("110101198001021234");
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Save"); },
         .saved = true,
         .save_from = "select iif(max(A0199)",
         .save_to = "select iif(a0101 is null"});
}

TEST(FaultSweep, SaveInASetOfManyRecords) {
  Sweep({.name = "replace many",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A03");
               visit.user.ClickRow(2);
               visit.Masked("A03_A0301").SetText("1970年01月");
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Save"); },
         .saved = true,
         .save_from = "delete from A03",
         .save_to = "update A03 set A0399"});
}

TEST(FaultSweep, SaveInASetOfOneRecord) {
  Sweep({.name = "replace one",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A13");
               visit.Text("A13_A1302").SetText("7");
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Save"); },
         .saved = true,
         .save_from = "delete from A13",
         .save_to = "insert into A13"});
}

TEST(FaultSweep, SaveByEnterInTheLastField) {
  Sweep({.name = "enter",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A02");
               visit.Text("A02_A0204").SetFocus();
             },
         .act = [](Visit& visit) { visit.user.Press(toolkit::kKeyReturn); },
         .saved = true,
         .save_from = "delete from A02",
         .save_to = "update A02 set A0299",
         .save_is_ignored = true});
}

TEST(FaultSweep, DeleteInASetOfManyRecords) {
  Sweep({.name = "delete",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A11");
               visit.user.ClickRow(2);
               visit.script.WillAnswer(kAnswerYes);
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Delete"); },
         .messages = {{"是否删除此条记录？", 4, "人员维护"}}});
}

TEST(FaultSweep, DeleteOfAPerson) {
  Sweep({.name = "delete A01",
         .prepare = [](Visit& visit) { visit.script.WillAnswer(kAnswerYes); },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Delete"); },
         .messages = {{"此操作将删除此人所有信息，是否删除？", 4, "人员维护"}}});
}

TEST(FaultSweep, CancelOfEdits) {
  Sweep({.name = "cancel",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A04");
               visit.Text("A04_A0404").SetText("理事长");
               visit.script.WillAnswer(kAnswerYes);
               visit.script.WillAnswer(kAnswerNo);
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Cancel"); },
         .messages = {{"数据已被修改并且未被保存，是否取消？", 4, "人员维护"},
                      {"数据被修改且未保存，是否保存？", 4, "人员维护"}}});
}

TEST(FaultSweep, CancelThatSavesAfterAll) {
  Sweep({.name = "cancel and save",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A04");
               visit.Text("A04_A0404").SetText("理事长");
               visit.script.WillAnswer(kAnswerYes);
               visit.script.WillAnswer(kAnswerYes);
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Cancel"); },
         .messages = {{"数据已被修改并且未被保存，是否取消？", 4, "人员维护"},
                      {"数据被修改且未保存，是否保存？", 4, "人员维护"}},
         .save_from = "delete from A04",
         .save_to = "update A04 set A0499"});
}

TEST(FaultSweep, ExitWithASave) {
  Sweep({.name = "exit",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A04");
               visit.Text("A04_A0404").SetText("理事长");
               visit.script.WillAnswer(kAnswerYes);
             },
         .act = [](Visit& visit) { visit.user.ClickToolbar("Exit"); },
         .messages = {{"数据被修改但未保存，是否保存？", 4, "人员维护"}},
         .closes = true,
         .save_from = "delete from A04",
         .save_to = "update A04 set A0499"});
}

TEST(FaultSweep, AMoveInTheList) {
  Sweep({.name = "move",
         .prepare = [](Visit& visit) { visit.GoTo("A03"); },
         .act = [](Visit& visit) { visit.user.ClickRow(3); }});
}

TEST(FaultSweep, AMoveInTheListThatSaves) {
  Sweep({.name = "move and save",
         .prepare =
             [](Visit& visit) {
               visit.GoTo("A02");
               visit.Text("A02_A0203").SetText("新专业");
               visit.script.WillAnswer(kAnswerNo);
             },
         .act = [](Visit& visit) { visit.user.ClickRow(3); },
         .messages = {{"数据已被修改并未保存，是否保存？", 4, "DossierKit"}},
         .save_from = "delete from A02",
         .save_to = "update A02 set A0299",
         .save_is_ignored = true});
}

}  // namespace
}  // namespace dossierkit::tests
