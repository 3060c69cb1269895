#include "platform/environment/value.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/environment/failure.h"
#include "platform/environment/numbers.h"
#include "tests/support/failures.h"

namespace dossierkit::environment {
namespace {

using tests::NumberOfFailure;

TEST(Numbers, ReadsSignDigitsAndOnePoint) {
  EXPECT_EQ(ParseNumber("12"), 12);
  EXPECT_EQ(ParseNumber(" -12.5 "), -12.5);
  EXPECT_EQ(ParseNumber("+.5"), 0.5);
  EXPECT_EQ(ParseNumber("5."), 5);
  EXPECT_EQ(ParseNumber("007"), 7);
}

TEST(Numbers, AnythingElseIsNoNumber) {
  for (const char* text : {"", " ", ".", "-", "+-1", "1-", "1.2.3", "12abc", "1e5", "0x10", "1,000", "１２",
                           "inf", "nan", "1 2", "- 1", "￥5"}) {
    EXPECT_FALSE(IsNumeric(text)) << text;
  }
}

TEST(Numbers, BeyondEveryNumberIsNoNumberAndTinyIsZero) {
  EXPECT_FALSE(IsNumeric(std::string(400, '9')));
  EXPECT_EQ(ParseNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(Numbers, OuterBlanksAndTabsMeanNothing) {
  for (const char* text : {" 5", "5 ", "\t5", "5\t", " \t 5\t  "}) EXPECT_EQ(ParseNumber(text), 5.0) << text;
  for (const char* text : {" ", "\t", " \t", "- 5", "5\t5", "\n5", "5\r"})
    EXPECT_FALSE(ParseNumber(text)) << text;
}

TEST(Value, TextOfEachKind) {
  EXPECT_EQ(TextOf(Value()), "");
  EXPECT_EQ(TextOf(true), "True");
  EXPECT_EQ(TextOf(false), "False");
  EXPECT_EQ(TextOf(-5), "-5");
  EXPECT_EQ(TextOf(0.1 + 0.2), "0.3");
  EXPECT_EQ(TextOf(-0.0), "0");
  EXPECT_EQ(TextOf(2.5), "2.5");
  EXPECT_EQ(TextOf(1e15), "1000000000000000");
  EXPECT_EQ(TextOf(DateTime{1990, 3, 5}), "1990/3/5");
  EXPECT_EQ(TextOf(DateTime{1990, 3, 5, 7, 8, 0}), "1990/3/5 7:08:00");
  EXPECT_EQ(TextOf("姓名"), "姓名");
}

TEST(Value, NullHasNoTextOfItsOwn) {
  EXPECT_EQ(NumberOfFailure([] { TextOf(Null{}); }), kInvalidUseOfNull);
  EXPECT_EQ(TextOr(Null{}, "x"), "x");
  EXPECT_EQ(TextOr(5, "x"), "5");
}

TEST(Value, SmallIntegersRoundHalvesToEven) {
  EXPECT_EQ(ToInt16(0.5), 0);
  EXPECT_EQ(ToInt16(1.5), 2);
  EXPECT_EQ(ToInt16(2.5), 2);
  EXPECT_EQ(ToInt16(-0.5), 0);
  EXPECT_EQ(ToInt16(-1.5), -2);
  EXPECT_EQ(ToInt16("2.51"), 3);
  EXPECT_EQ(ToInt16(true), -1);
  EXPECT_EQ(ToInt16(Value()), 0);
}

TEST(Value, SmallIntegersEndAtSixteenBits) {
  EXPECT_EQ(ToInt16(32767), 32767);
  EXPECT_EQ(ToInt16(-32768), -32768);
  EXPECT_EQ(ToInt16(32767.4), 32767);
  for (const Value& value : {Value(32768), Value(-32769), Value(32767.5), Value("40000")}) {
    EXPECT_EQ(NumberOfFailure([&] { ToInt16(value); }), kOverflow);
  }
  EXPECT_EQ(ToInt32(32768), 32768);
  EXPECT_EQ(NumberOfFailure([] { ToInt32(2147483648.0); }), kOverflow);
  EXPECT_EQ(NumberOfFailure([] { ToInt32(std::numeric_limits<double>::quiet_NaN()); }), kOverflow);
}

TEST(Value, WhatIsNoNumberIsATypeMismatch) {
  EXPECT_EQ(NumberOfFailure([] { ToInt16("12abc"); }), kTypeMismatch);
  EXPECT_EQ(NumberOfFailure([] { ToInt16(""); }), kTypeMismatch);
  EXPECT_EQ(NumberOfFailure([] { ToInt32(DateTime{1990, 3, 5}); }), kTypeMismatch);
  EXPECT_EQ(NumberOfFailure([] { ToInt16(Null{}); }), kInvalidUseOfNull);
}

TEST(Value, BooleansOfEachKind) {
  EXPECT_TRUE(ToBoolean(true));
  EXPECT_TRUE(ToBoolean(-1));
  EXPECT_TRUE(ToBoolean("true"));
  EXPECT_TRUE(ToBoolean("0.5"));
  EXPECT_FALSE(ToBoolean("FALSE"));
  EXPECT_FALSE(ToBoolean(0));
  EXPECT_FALSE(ToBoolean("0"));
  EXPECT_FALSE(ToBoolean(Value()));
  EXPECT_EQ(NumberOfFailure([] { ToBoolean("是"); }), kTypeMismatch);
  EXPECT_EQ(NumberOfFailure([] { ToBoolean(Null{}); }), kInvalidUseOfNull);
}

}  // namespace
}  // namespace dossierkit::environment
