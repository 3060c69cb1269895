#include "adapters/odbc/connection_string.h"

#include <gtest/gtest.h>

#include <string>

#include "adapters/odbc/engine.h"
#include "adapters/odbc/odbc_connection.h"
#include "adapters/odbc/utf16.h"
#include "platform/environment/failure.h"

namespace dossierkit::odbc {
namespace {

using environment::Failure;

std::string ToldBy(const std::string& connection_string) {
  try {
    const OdbcConnection connection(connection_string);
  } catch (const Failure& failure) {
    return failure.description();
  }
  return "no failure";
}

TEST(ConnectionString, AttributesAreNamesAndValues) {
  using Attributes = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(AttributesOf("Driver={My; Driver};Server= a.b ;Pwd={x}};y};;Uid=u"),
            (Attributes{{"Driver", "My; Driver"}, {"Server", "a.b"}, {"Pwd", "x};y"}, {"Uid", "u"}}));
  EXPECT_EQ(AttributesOf(""), Attributes{});
  EXPECT_EQ(AttributesOf("DSN=office;nonsense"), (Attributes{{"DSN", "office"}}));
  EXPECT_EQ(AttributesOf("Pwd={never closed;Uid=u"), (Attributes{{"Pwd", "{never closed;Uid=u"}}));
  EXPECT_EQ(AttributeOf("Server=s;PORT=5", "port"), "5");
  EXPECT_EQ(AttributeOf("Server=s", "Port"), "");
}

TEST(ConnectionString, OnlyWhatTheHostLeavesOpenIsAdded) {
  EXPECT_EQ(WithAttributes("Server=s;debug=1", "Debug=0;CommLog=0"), "Server=s;debug=1;CommLog=0");
  EXPECT_EQ(WithAttributes("Server=s;", "Debug=0"), "Server=s;Debug=0");
}

TEST(ConnectionString, AListOfServersIsAStringForEach) {
  using Strings = std::vector<std::string>;
  EXPECT_EQ(ServersOf("Driver={a,b};Server=s;Pwd={x,y}"), (Strings{"Driver={a,b};Server=s;Pwd={x,y}"}));
  EXPECT_EQ(ServersOf("DSN=office"), (Strings{"DSN=office"}));
  EXPECT_EQ(ServersOf("Driver={D;};server = a, b:3307 ,[::1],;Port=5;Pwd={x;}}y}"),
            (Strings{"Driver={D;};Port=5;Pwd={x;}}y};Server=a", "Driver={D;};Pwd={x;}}y};Server=b;Port=3307",
                     "Driver={D;};Port=5;Pwd={x;}}y};Server=[::1]"}));
  EXPECT_EQ(ServersOf("Server=a:3307;Uid=u"), (Strings{"Uid=u;Server=a;Port=3307"}));
  EXPECT_EQ(ServersOf("Server=::1"), (Strings{"Server=::1"}));
  EXPECT_EQ(ServersOf("Servername=a,b"), (Strings{"Server=a", "Server=b"}));
  EXPECT_EQ(ServersOf("Server=,"), (Strings{"Server=,"}));
}

TEST(ConnectionString, IsShownWithoutItsPasswords) {
  EXPECT_EQ(ShownConnectionString("Driver=D;Pwd=geheim;Uid=geh;PASSWORD={a;b}"),
            "Driver=D;Pwd=***;Uid=geh;PASSWORD=***");
  EXPECT_EQ(ShownConnectionString("Driver=D;Pwd={geheim;Uid=u"), "Driver=D;Pwd=***");
  EXPECT_EQ(ShownConnectionString("Driver=D;SSLPassphrase=geheim"), "Driver=D;SSLPassphrase=***");
  EXPECT_EQ(WithoutPasswords("no geheim} here: geheim}}", "Pwd={geheim}}}"), "no *** here: ***");
  EXPECT_EQ(WithoutPasswords("as it is", "Pwd=;Uid=is"), "as it is");
}

TEST(ConnectionString, IsShownWithoutThePasswordsAmongItsOptions) {
  EXPECT_EQ(ShownConnectionString("Driver=D;pqopt={sslmode=require password=geheim};Uid=u"),
            "Driver=D;pqopt=***;Uid=u");
  EXPECT_EQ(ShownConnectionString("Driver=D;pqopt={sslmode=require};ConnSettings=set%20password%3Dgeheim"),
            "Driver=D;pqopt=sslmode=require;ConnSettings=***");
  EXPECT_EQ(ShownConnectionString("Database=secretariat;Uid=u"), "Database=secretariat;Uid=u");
  const std::string options =
      "pqopt={user=u PassWord = 'ge}}h\\'e im' sslpassword=o\\ pen sslmode=require password=}";
  EXPECT_EQ(WithoutPasswords("ge}h'e im ge}h\\'e im ge}}h\\'e im o pen o\\ pen require u", options),
            "*** *** *** *** *** require u");
  EXPECT_EQ(WithoutPasswords("a geheim b", "pqopt=password=geheim"), "a *** b");
  EXPECT_EQ(WithoutPasswords("a = b", "pqopt={=a password}"), "a = b");
}

TEST(OdbcConnection, ADriverThatIsNotThereIsToldWithoutThePassword) {
  EXPECT_EQ(ToldBy("Driver=Nope;Server=x;Pwd=Nope"),
            "无法连接数据库服务器：Can't open lib '***' : file not found（01000）。");
}

TEST(OdbcConnection, APasswordAmongTheOptionsIsNotToldEither) {
  EXPECT_EQ(ToldBy("Driver=Nope;Server=x;pqopt={password=Nope}"),
            "无法连接数据库服务器：Can't open lib '***' : file not found（01000）。");
}

TEST(Engines, AServerThatIsNotKnownIsRefusedWithItsName) {
  EXPECT_EQ(EngineNamed("MariaDB").name, "MariaDB");
  EXPECT_EQ(EngineNamed("PostgreSQL").name, "PostgreSQL");
  try {
    EngineNamed("Oracle");
    FAIL() << "no failure";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.description(), "不支持数据库服务器“Oracle”，可以使用的是：PostgreSQL、MariaDB。");
    EXPECT_EQ(failure.number(), environment::kEngineFailure);
  }
}

// As a server tells them whose system was installed in another language than English.
TEST(Engines, FailuresOfPostgresqlAreUnderstoodInOtherLanguages) {
  using What = jet::EngineFailure;
  struct Case {
    const char* state;
    const char* words;
    What what;
    const char* detail;
    bool is_cut;
  };
  for (const Case& known : {
           Case{"42P01", "relation \"a77\" does not exist", What::kNoSuchTable, "a77", true},
           Case{"42P01", "关系 \"a77\" 不存在", What::kNoSuchTable, "a77", true},
           Case{"42P01", "Relation »a77« existiert nicht", What::kNoSuchTable,
                "Relation »a77« existiert nicht", false},
           Case{"42P01", "缺少表 \"v\" 的 FROM 子句项", What::kSyntax, "缺少表 \"v\" 的 FROM 子句项", false},
           Case{"42P01", "missing FROM-clause entry for table \"v\"", What::kSyntax,
                "missing FROM-clause entry for table \"v\"", false},
           Case{"42703", "关系 \"t\" 的列 \"b\" 不存在", What::kUnknownField, "b", true},
           Case{"42703", "列 \"b\" 不存在", What::kUnknownName, "b", true},
           Case{"42703", "列 t.b 不存在", What::kUnknownName, "t.b", true},
           Case{"42703", "Spalte t.b existiert nicht", What::kUnknownName, "Spalte t.b existiert nicht",
                false},
           Case{"42702", "列引用 \"a\" 存在歧义", What::kAmbiguousName, "a", true},
           Case{"42601", "语法错误，位置在 \"c\" 或其附近", What::kErrorNear, "c", true},
           Case{"42601", "语法错误，位置在输入末尾", What::kIncomplete, "语法错误，位置在输入末尾", false},
           Case{"42601", "INSERT 的表达式多于指定的列", What::kSyntax, "INSERT 的表达式多于指定的列", false},
           Case{"08S01", "服务器已意外关闭连接", What::kConnectionLost, "服务器已意外关闭连接", false},
           Case{"22012", "除以零", What::kOther, "除以零", false},
       }) {
    SCOPED_TRACE(known.words);
    const Understood understood = UnderstoodBy(EngineNamed("PostgreSQL"), known.state, 1, known.words);
    EXPECT_EQ(understood.what, known.what);
    EXPECT_EQ(understood.detail, known.detail);
    EXPECT_EQ(understood.is_cut, known.is_cut);
  }
}

TEST(Utf16, KeepsEveryCharacter) {
  const std::string text = "a\xC3\xA9中\xF0\xA0\xAE\xB7\x7F";
  EXPECT_EQ(ToUtf8(ToWide(text)), text);
  EXPECT_EQ(ToWide("\xF0\xA0\xAE\xB7"), (Wide{0xD842, 0xDFB7}));
}

TEST(Utf16, ReplacesWhatIsNoCharacter) {
  EXPECT_EQ(ToUtf8(Wide{0xD842}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(Wide{0xDFB7, 'a'}), "\xEF\xBF\xBD\x61");
  EXPECT_EQ(ToUtf8(ToWide("a\xFF")), "a\xEF\xBF\xBD");
}

}  // namespace
}  // namespace dossierkit::odbc
