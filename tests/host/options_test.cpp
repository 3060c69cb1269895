#include "host/options.h"

#include <gtest/gtest.h>

namespace dossierkit::host {
namespace {

using Action = Options::Action;

TEST(Options, WithoutArgumentsThePeopleAreShown) {
  const Options options = ParseOptions({});
  EXPECT_EQ(options.action, Action::kPeople);
  EXPECT_FALSE(options.person_type) << "the person's own";
  EXPECT_TRUE(options.database.empty());
}

TEST(Options, APersonIsOpenedWithOperationTypeThree) {
  const Options options = ParseOptions({"--person", "P", "--database", "d.db", "--photos", "dir"});
  EXPECT_EQ(options.action, Action::kVisit);
  EXPECT_EQ(options.person, "P");
  EXPECT_EQ(options.operation_type, 3);
  EXPECT_EQ(options.database, "d.db");
  EXPECT_EQ(options.photos, "dir");
}

TEST(Options, ANewPersonIsOpenedWithOperationTypeZero) {
  const Options options = ParseOptions({"--new"});
  EXPECT_EQ(options.action, Action::kVisit);
  EXPECT_EQ(options.operation_type, 0);
}

TEST(Options, TypesAreTakenAsGiven) {
  const Options options = ParseOptions({"--person", "P", "--operation-type", "1", "--person-type", "2"});
  EXPECT_EQ(options.operation_type, 1);
  EXPECT_EQ(options.person_type, 2);
}

TEST(Options, VisitsOfSeveralClerksSeeTheirOwnRowsAndHaveNames) {
  const Options options = ParseOptions({"--connection", "c", "--own-rows", "--clerk", "zhang@desk-3"});
  EXPECT_EQ(options.action, Action::kPeople);
  EXPECT_TRUE(options.own_rows);
  EXPECT_EQ(options.clerk, "zhang@desk-3");
  EXPECT_FALSE(ParseOptions({"--connection", "c"}).own_rows);
  EXPECT_EQ(ParseOptions({"--person", "P", "--own-rows"}).action, Action::kVisit);
  EXPECT_EQ(ParseOptions({"--clerk", std::string(128, 'x')}).clerk.size(), 128U);
  EXPECT_THROW(ParseOptions({"--clerk", std::string(129, 'x')}), UsageError);
  EXPECT_THROW(ParseOptions({"--clerk", ""}), UsageError);
  EXPECT_THROW(ParseOptions({"--tour", "dir", "--own-rows"}), UsageError);
  EXPECT_THROW(ParseOptions({"check", "f.db", "--own-rows"}), UsageError);
  EXPECT_THROW(ParseOptions({"check", "f.db", "--clerk", "x"}), UsageError);
}

TEST(Options, TheTourHasAFolder) {
  const Options options = ParseOptions({"--tour", "dir", "--trace-sql", "t.json"});
  EXPECT_EQ(options.action, Action::kTour);
  EXPECT_EQ(options.folder, "dir");
  EXPECT_EQ(options.trace_file, "t.json");
}

TEST(Options, CreateSampleHasOneFile) {
  EXPECT_EQ(ParseOptions({"create-sample", "f.db"}).file, "f.db");
  EXPECT_THROW(ParseOptions({"create-sample"}), UsageError);
  EXPECT_THROW(ParseOptions({"create-sample", "a", "b"}), UsageError);
}

TEST(Options, CreateEmptyHasOneFile) {
  const Options options = ParseOptions({"create-empty", "f.db"});
  EXPECT_EQ(options.action, Action::kCreateEmpty);
  EXPECT_EQ(options.file, "f.db");
  EXPECT_THROW(ParseOptions({"create-empty"}), UsageError);
  EXPECT_THROW(ParseOptions({"create-empty", "a", "b"}), UsageError);
}

TEST(Options, ADatabaseIsMadeOnAServerByItsConnectionString) {
  for (const char* command : {"create-sample", "create-server"}) {
    const Options options = ParseOptions({command, "--connection", "Driver=x"});
    EXPECT_EQ(options.action, Action::kCreateSample) << command;
    EXPECT_EQ(options.connection, "Driver=x");
    EXPECT_EQ(options.file, "");
    EXPECT_THROW(ParseOptions({command, "--connection"}), UsageError) << command;
    EXPECT_THROW(ParseOptions({command, "--connection", "x", "y"}), UsageError) << command;
  }
  EXPECT_EQ(ParseOptions({"create-empty", "--connection", "c"}).action, Action::kCreateEmpty);
  EXPECT_THROW(ParseOptions({"create-server", "f.db"}), UsageError);
  EXPECT_EQ(ParseOptions({"create-rights", "--connection", "c"}).action, Action::kCreateRights);
  EXPECT_THROW(ParseOptions({"create-rights", "f.db"}), UsageError);
  EXPECT_EQ(ParseOptions({"create-audit", "--connection", "c"}).action, Action::kCreateAudit);
  const Options history = ParseOptions({"history", "--person", "P", "--connection", "c"});
  EXPECT_EQ(history.action, Action::kHistory);
  EXPECT_EQ(history.person, "P");
  EXPECT_EQ(history.connection, "c");
  EXPECT_THROW(ParseOptions({"history", "--person", "P"}), UsageError);
  EXPECT_THROW(ParseOptions({"history", "--connection", "c", "--new"}), UsageError);
  EXPECT_THROW(ParseOptions({"create-server"}), UsageError);
  EXPECT_THROW(ParseOptions({"create-other", "f.db"}), UsageError);
}

TEST(Options, RestoreTakesTheNumberOfAChange) {
  const Options options = ParseOptions({"restore", "--change", "12", "--connection", "c"});
  EXPECT_EQ(options.action, Action::kRestore);
  EXPECT_EQ(options.change, 12);
  EXPECT_EQ(options.connection, "c");
  for (const char* number : {"0", "-1", "x", "1x", "", "99999999999999999999"})
    EXPECT_THROW(ParseOptions({"restore", "--change", number, "--connection", "c"}), UsageError) << number;
  EXPECT_THROW(ParseOptions({"restore", "--change", "1"}), UsageError);
  EXPECT_THROW(ParseOptions({"restore", "--connection", "c"}), UsageError);
  EXPECT_THROW(ParseOptions({"restore", "--connection", "c", "--change"}), UsageError);
}

TEST(Options, CopyTakesTwoDatabases) {
  const Options options = ParseOptions({"copy", "--to", "y.db", "--from", "x.db"});
  EXPECT_EQ(options.action, Action::kCopy);
  EXPECT_EQ(options.from, "x.db");
  EXPECT_EQ(options.to, "y.db");
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"copy"},
                                             {"copy", "--from", "x"},
                                             {"copy", "--to", "y"},
                                             {"copy", "--from", "x", "--to"},
                                             {"copy", "--from", "x", "--to", "y", "--json"},
                                             {"copy", "x", "y"}})
    EXPECT_THROW(ParseOptions(arguments), UsageError) << arguments.size();
}

TEST(Options, CheckTakesADatabaseAndPhotographs) {
  const Options options = ParseOptions({"check", "--database", "d.db", "--photos", "dir", "--json"});
  EXPECT_EQ(options.action, Action::kCheck);
  EXPECT_EQ(options.database, "d.db");
  EXPECT_EQ(options.photos, "dir");
  EXPECT_TRUE(options.json);
  EXPECT_FALSE(ParseOptions({"check"}).json);
}

TEST(Options, CheckTakesOneDatabase) {
  const Options options = ParseOptions({"check", "--json", "d.db"});
  EXPECT_EQ(options.action, Action::kCheck);
  EXPECT_EQ(options.database, "d.db");
  for (const std::vector<std::string>& more : std::vector<std::vector<std::string>>{
           {"--database", "e.db"}, {"--connection", "c"}, {"e.db"}, {""}, {"-x"}}) {
    std::vector<std::string> arguments = {"check", "d.db"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    EXPECT_THROW(ParseOptions(arguments), UsageError) << more.front();
  }
  EXPECT_THROW(ParseOptions({"check", ""}), UsageError);
  EXPECT_THROW(ParseOptions({"d.db"}), UsageError);
}

TEST(Options, CheckTakesNothingOfAVisit) {
  for (const std::vector<std::string>& more : std::vector<std::vector<std::string>>{{"--new"},
                                                                                    {"--person", "P"},
                                                                                    {"--operation-type", "3"},
                                                                                    {"--person-type", "1"},
                                                                                    {"--trace-sql", "t"}}) {
    std::vector<std::string> arguments = {"check"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    EXPECT_THROW(ParseOptions(arguments), UsageError) << more.front();
  }
  EXPECT_THROW(ParseOptions({"--json"}), UsageError);
  EXPECT_THROW(ParseOptions({"--database", "d.db", "check"}), UsageError);
  EXPECT_THROW(ParseOptions({"check", "--tour", "dir"}), UsageError);
}

TEST(Options, HelpAndVersionNeedNothingElse) {
  EXPECT_EQ(ParseOptions({"--help"}).action, Action::kHelp);
  EXPECT_EQ(ParseOptions({"--version"}).action, Action::kVersion);
}

TEST(Options, WhatIsWrongIsNamed) {
  const auto reason = [](const std::vector<std::string>& arguments) -> std::string {
    try {
      ParseOptions(arguments);
    } catch (const UsageError& error) {
      return error.what();
    }
    return "accepted";
  };
  EXPECT_EQ(reason({"--nonsense"}), "unknown argument '--nonsense'");
  EXPECT_EQ(reason({"--person"}), "--person takes a value");
  EXPECT_EQ(reason({"--person", ""}), "--person takes a value");
  for (const char* option : {"--database", "--connection", "--photos", "--clerk", "--trace-sql", "--tour"})
    EXPECT_EQ(reason({option, ""}), std::string(option) + " takes a value");
  EXPECT_EQ(reason({"check", "--database", ""}), "--database takes a value");
  EXPECT_EQ(reason({"--new", "--person", "P"}), "--person and --new exclude one another");
  EXPECT_EQ(reason({"--database", "d", "--connection", "c"}),
            "--database and --connection exclude one another");
  EXPECT_EQ(reason({"--new", "--person-type", "x"}),
            "--person-type takes a number from -32768 to 32767, not 'x'");
  EXPECT_EQ(reason({"--new", "--person-type", "1x"}),
            "--person-type takes a number from -32768 to 32767, not '1x'");
  EXPECT_EQ(reason({"--new", "create-sample", "f"}), "unknown argument 'create-sample'");
  EXPECT_EQ(reason({"--new", "--operation-type", "40000"}),
            "--operation-type takes a number from -32768 to 32767, not '40000'");
  EXPECT_EQ(reason({"--operation-type", "3"}), "--operation-type goes with --person or --new");
  EXPECT_EQ(reason({"--tour", "d", "--new"}), "--tour chooses its own person");
}

TEST(Options, TheUsageNamesEveryOption) {
  for (const char* option :
       {"--database", "--connection", "--photos", "--person", "--new", "--operation-type", "--person-type",
        "--trace-sql", "--tour", "create-sample", "--help", "--version"}) {
    EXPECT_NE(Usage().find(option), std::string::npos) << option;
  }
}

}  // namespace
}  // namespace dossierkit::host
