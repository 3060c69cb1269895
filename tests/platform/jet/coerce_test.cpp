// Declared types, and constants by them.
#include "platform/jet/coerce.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/environment/failure.h"
#include "platform/jet/renderer.h"
#include "tests/support/failures.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;
using environment::DateTime;
using environment::Value;

TEST(ColumnOfDeclaration, EachKindHasItsTypes) {
  const struct {
    const char* declared;
    ColumnKind kind;
  } kTypes[] = {
      {"boolean", ColumnKind::kBoolean},
      {"BIT", ColumnKind::kBoolean},
      {"YesNo", ColumnKind::kBoolean},
      {"date", ColumnKind::kDate},
      {"DateTime", ColumnKind::kDate},
      {"timestamp", ColumnKind::kDate},
      {"time", ColumnKind::kDate},
      {"char(3)", ColumnKind::kText},
      {"VarChar(50)", ColumnKind::kText},
      {"ntext", ColumnKind::kText},
      {"memo", ColumnKind::kText},
      {"clob", ColumnKind::kText},
      {"guid", ColumnKind::kText},
      {"int", ColumnKind::kInteger},
      {"integer", ColumnKind::kInteger},
      {"long", ColumnKind::kInteger},
      {"short", ColumnKind::kInteger},
      {"counter", ColumnKind::kInteger},
      {"bigint", ColumnKind::kInteger},
      {"real", ColumnKind::kFloating},
      {"float", ColumnKind::kFloating},
      {"double", ColumnKind::kFloating},
      {"numeric(9,2)", ColumnKind::kFloating},
      {"number", ColumnKind::kFloating},
      {"decimal(9,2)", ColumnKind::kFloating},
      {"", ColumnKind::kUnknown},
      {"blob", ColumnKind::kUnknown},
  };
  for (const auto& type : kTypes)
    EXPECT_EQ(ColumnOfDeclaration({}, type.declared).kind, type.kind) << type.declared;
}

TEST(ColumnOfDeclaration, TheFirstMeaningDecides) {
  EXPECT_EQ(ColumnOfDeclaration({}, "long text").kind, ColumnKind::kText);
  EXPECT_EQ(ColumnOfDeclaration({}, "long char").kind, ColumnKind::kText);
  EXPECT_EQ(ColumnOfDeclaration({}, "longbit").kind, ColumnKind::kBoolean);
}

TEST(ColumnOfDeclaration, ShortIntegersHave16Bits) {
  for (const char* declared : {"smallint", "SMALLINT", "short", "short integer"})
    EXPECT_TRUE(ColumnOfDeclaration({}, declared).is_short) << declared;
  for (const char* declared : {"int", "long", "counter", "shorttext", "real"})
    EXPECT_FALSE(ColumnOfDeclaration({}, declared).is_short) << declared;
  EXPECT_EQ(ColumnOfDeclaration("A0205", "short").name, "A0205");
}

TEST(Coerce, GivesTheValueOfTheColumnsKind) {
  const auto coerce = [](const char* text, const char* declared) {
    return Coerce(text, ColumnOfDeclaration({}, declared));
  };
  EXPECT_EQ(coerce("1990年03月", "datetime"), Value(DateTime{1990, 3, 1}));
  EXPECT_EQ(coerce("1990-03-05 7:08", "datetime"), Value(DateTime{1990, 3, 5, 7, 8, 0}));
  EXPECT_EQ(coerce("true", "bit"), Value(true));
  EXPECT_EQ(coerce("FALSE", "bit"), Value(false));
  EXPECT_EQ(coerce("-1", "bit"), Value(true));
  EXPECT_EQ(coerce("0.0", "bit"), Value(false));
  EXPECT_EQ(coerce("12.5", "integer"), Value(12));
  EXPECT_EQ(coerce("40000", "integer"), Value(40000));
  EXPECT_EQ(coerce("-32768", "short"), Value(-32768));
  EXPECT_EQ(coerce("12", "double"), Value(12.0));
  EXPECT_EQ(coerce("12", "varchar(9)"), Value("12"));
  EXPECT_EQ(coerce("12", ""), Value("12"));
}

TEST(Coerce, RefusesWhatDoesNotFit) {
  const auto number_of = [](const char* text, const char* declared) {
    return tests::NumberOfFailure([&] { Coerce(text, ColumnOfDeclaration({}, declared)); });
  };
  for (const char* declared : {"datetime", "bit", "integer", "short", "double"}) {
    EXPECT_EQ(number_of("", declared), environment::kDataMismatch) << declared;
    EXPECT_EQ(number_of("x", declared), environment::kDataMismatch) << declared;
  }
  EXPECT_EQ(number_of("32768", "short"), environment::kOverflow);
  EXPECT_EQ(number_of("2147483648", "integer"), environment::kOverflow);
}

TEST(ConstantOf, ReadsAsTheSameValueAgain) {
  EXPECT_EQ(ConstantOf(true, {}), "true");
  EXPECT_EQ(ConstantOf(false, {}), "false");
  EXPECT_EQ(ConstantOf(std::int64_t{-7}, {}), "-7");
  EXPECT_EQ(ConstantOf(0.1, {}), "0.1");
  EXPECT_EQ(ConstantOf(1e22, {}), "10000000000000000000000");
  EXPECT_EQ(ConstantOf("it's", {}), "'it''s'");
  EXPECT_EQ(ConstantOf(DateTime{1990, 3, 5}, {}), "'1990-03-05'");
  EXPECT_EQ(ConstantOf(DateTime{1990, 3, 5, 7, 8, 9}, {}), "'1990-03-05 07:08:09'");
  EXPECT_EQ(ConstantOf(DateTime{1990, 3, 5, 0, 0, 1}, {}), "'1990-03-05 00:00:01'");
  for (const double number : {0.1 + 0.2, 1.0 / 3, 1e300, 1.7976931348623157e308, 5e-324})
    EXPECT_EQ(Coerce(ConstantOf(number, {}), ColumnOfDeclaration({}, "double")), Value(number));
}

TEST(ConstantOf, IsWrittenAsTheEngineAsks) {
  const Renderer engine{.true_constant = "1", .date = "timestamp ", .doubles_backslashes = true};
  EXPECT_EQ(ConstantOf(true, engine), "1");
  EXPECT_EQ(ConstantOf(DateTime{1990, 3, 5}, engine), "timestamp '1990-03-05'");
  EXPECT_EQ(ConstantOf("a\\'b", engine), "'a\\\\''b'");
}

TEST(CoerceToCompare, NumbersStayAsExactAsTheyAre) {
  EXPECT_EQ(CoerceToCompare("4.9", ado::ColumnKind::kInteger), Value(4.9));
  EXPECT_EQ(CoerceToCompare("-5", ado::ColumnKind::kInteger), Value(-5));
  EXPECT_EQ(CoerceToCompare("1e0", ado::ColumnKind::kText), Value("1e0"));
  EXPECT_EQ(CoerceToCompare("9999999999999999999999", ado::ColumnKind::kFloating), Value(1e22));
  EXPECT_EQ(CoerceToCompare("-1", ado::ColumnKind::kBoolean), Value(true));
  EXPECT_EQ(CoerceToCompare("1990年03月", ado::ColumnKind::kDate), Value(DateTime{1990, 3, 1}));
  try {
    CoerceToCompare("x", ado::ColumnKind::kInteger);
    ADD_FAILURE();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), environment::kDataMismatch);
  }
}

}  // namespace
}  // namespace dossierkit::jet
