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

TEST(OdbcConnection, ADriverThatIsNotThereIsToldWithoutThePassword) {
  EXPECT_EQ(ToldBy("Driver=Nope;Server=x;Pwd=Nope"),
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
