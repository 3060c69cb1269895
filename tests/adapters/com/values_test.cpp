// What the recordsets of hosts hold, of each type of Automation, as a Snapshot has it.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <utility>

#include "adapters/com/ado_connection.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/value.h"
#include "tests/adapters/com/stand_in.h"
#include "tests/support/failures.h"

namespace dossierkit::com {
namespace {

using environment::DateTime;
using environment::Null;
using environment::Value;

// Of ADO's types of a column.
constexpr LONG kSmallInt = 2;
constexpr LONG kSingle = 4;
constexpr LONG kDouble = 5;
constexpr LONG kCurrency = 6;
constexpr LONG kDate = 7;
constexpr LONG kBoolean = 11;
constexpr LONG kVariant = 12;
constexpr LONG kDecimal = 14;
constexpr LONG kUnsignedTinyInt = 17;
constexpr LONG kBigInt = 20;
constexpr LONG kNumeric = 131;
constexpr LONG kVarWChar = 202;
constexpr LONG kLongVarBinary = 205;

using Arguments = std::vector<const VARIANT*>;

Variant OfDispatch(IDispatch* object) {
  Variant variant;
  V_VT(&variant.Get()) = VT_DISPATCH;
  V_DISPATCH(&variant.Get()) = object;
  return variant;
}

Variant OfTruth(bool truth) {
  Variant variant;
  V_VT(&variant.Get()) = VT_BOOL;
  V_BOOL(&variant.Get()) = truth ? VARIANT_TRUE : VARIANT_FALSE;
  return variant;
}

// An object with the members that a test gives it.
class HostObject : public LateObject {
 public:
  void Add(const wchar_t* name, std::function<Variant()> member) {
    Has(name, [member](const Arguments&) { return member(); });
  }
};

// A connection whose every statement gives one row of one column, called Total.
class OneCell : public HostObject {
 public:
  OneCell(LONG type, std::function<Variant()> value) {
    auto left = std::make_shared<bool>(true);
    Add(L"State", [] { return Variant::OfInteger(1); });
    Add(L"Execute", [type, value, left] {
      *left = true;
      auto* const rows = new HostObject;
      rows->Add(L"State", [] { return Variant::OfInteger(1); });
      rows->Add(L"Fields", [type] {
        auto* const fields = new HostObject;
        fields->Add(L"Count", [] { return Variant::OfInteger(1); });
        fields->Add(L"Item", [type] {
          auto* const field = new HostObject;
          field->Add(L"Name", [] { return Variant::OfText("Total"); });
          field->Add(L"Type", [type] { return Variant::OfInteger(type); });
          return OfDispatch(field);
        });
        return OfDispatch(fields);
      });
      rows->Add(L"EOF", [left] { return OfTruth(!*left); });
      rows->Add(L"GetRows", [value, left] {
        *left = false;
        SAFEARRAYBOUND bounds[] = {{1, 0}, {1, 0}};
        Variant block;
        V_VT(&block.Get()) = VT_ARRAY | VT_VARIANT;
        V_ARRAY(&block.Get()) = SafeArrayCreate(VT_VARIANT, 2, bounds);
        LONG place[] = {0, 0};
        Variant cell = value();
        SafeArrayPutElement(V_ARRAY(&block.Get()), place, &cell.Get());
        return block;
      });
      rows->Add(L"Close", [] { return Variant(); });
      return OfDispatch(rows);
    });
  }
};

Value Read(LONG type, std::function<Variant()> value) {
  Pointer<IDispatch> host;
  *host.Put() = new OneCell(type, std::move(value));
  return AdoConnection(host.Get()).Execute("select 1")->Fields(0);
}

// A value of that type of Automation, written into the variant by `write`.
Value Of(LONG type, VARTYPE kind, const std::function<void(VARIANT&)>& write) {
  return Read(type, [&] {
    Variant variant;
    V_VT(&variant.Get()) = kind;
    write(variant.Get());
    return variant;
  });
}

// Hundreds of millions of ten-thousandths, as Automation counts money.
Value OfMoney(LONGLONG ten_thousandths) {
  return Of(kCurrency, VT_CY, [&](VARIANT& held) { V_CY(&held).int64 = ten_thousandths; });
}

Value OfDecimal(LONG type, ULONGLONG digits, BYTE scale, bool negative = false) {
  return Of(type, VT_DECIMAL, [&](VARIANT& held) {
    DECIMAL decimal{};
    decimal.Lo64 = digits;
    decimal.scale = scale;
    decimal.sign = negative ? DECIMAL_NEG : 0;
    V_DECIMAL(&held) = decimal;
    V_VT(&held) = VT_DECIMAL;
  });
}

Value OfDate(DATE date) {
  return Of(kDate, VT_DATE, [&](VARIANT& held) { V_DATE(&held) = date; });
}

TEST(ComValues, MoneyIsTheNumber) {
  EXPECT_EQ(OfMoney(123'456), Value(12.3456));
  EXPECT_EQ(OfMoney(-1), Value(-0.0001));
  EXPECT_EQ(OfMoney(0), Value(0.0));
  EXPECT_EQ(OfMoney(std::numeric_limits<LONGLONG>::max()), Value(922337203685477.5807));
  EXPECT_EQ(environment::TextOr(OfMoney(1'280'000), "Null"), "128");
  EXPECT_EQ(environment::TextOr(OfMoney(1'285'000), "Null"), "128.5");
}

TEST(ComValues, ADecimalIsTheNumber) {
  EXPECT_EQ(OfDecimal(kDecimal, 12345, 2), Value(123.45));
  EXPECT_EQ(OfDecimal(kNumeric, 12345, 2, true), Value(-123.45));
  EXPECT_EQ(OfDecimal(kNumeric, 1, 4), Value(0.0001));
  EXPECT_EQ(OfDecimal(kNumeric, 7, 0), Value(7.0));
  EXPECT_EQ(environment::TextOr(OfDecimal(kNumeric, 7, 0), "Null"), "7")
      << "a record number of such an engine";
}

TEST(ComValues, ANumberOfSinglePrecisionHasTheDigitsThatWereStored) {
  const auto single = [](float number) {
    return Of(kSingle, VT_R4, [&](VARIANT& held) { V_R4(&held) = number; });
  };
  EXPECT_EQ(single(0.1F), Value(0.1)) << "and not 0.100000001490116";
  EXPECT_EQ(single(-1234.5F), Value(-1234.5));
  EXPECT_EQ(single(1e20F), Value(1e20));
  EXPECT_EQ(single(0.0F), Value(0.0));
}

TEST(ComValues, ANumberOfDoublePrecisionIsItself) {
  EXPECT_EQ(Of(kDouble, VT_R8, [](VARIANT& held) { V_R8(&held) = 0.1; }), Value(0.1));
}

TEST(ComValues, IntegersOfEachWidthAreTheNumber) {
  EXPECT_EQ(Of(kSmallInt, VT_I2, [](VARIANT& held) { V_I2(&held) = -32768; }), Value(-32768));
  EXPECT_EQ(Of(kUnsignedTinyInt, VT_UI1, [](VARIANT& held) { V_UI1(&held) = 255; }), Value(255));
  EXPECT_EQ(Of(kVariant, VT_I1, [](VARIANT& held) { V_I1(&held) = -1; }), Value(-1));
  EXPECT_EQ(Of(kVariant, VT_UI2, [](VARIANT& held) { V_UI2(&held) = 65535; }), Value(65535));
  EXPECT_EQ(Of(kVariant, VT_I4, [](VARIANT& held) { V_I4(&held) = -2147483647; }), Value(-2147483647));
  EXPECT_EQ(Of(kVariant, VT_UI4, [](VARIANT& held) { V_UI4(&held) = 4294967295U; }),
            Value(std::int64_t{4294967295}));
  EXPECT_EQ(Of(kBigInt, VT_I8, [](VARIANT& held) { V_I8(&held) = std::numeric_limits<LONGLONG>::min(); }),
            Value(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(tests::NumberOfFailure([] {
              Of(kBigInt, VT_UI8,
                 [](VARIANT& held) { V_UI8(&held) = std::numeric_limits<ULONGLONG>::max(); });
            }),
            environment::kOverflow)
      << "beyond 64 bits with a sign";
}

TEST(ComValues, TruthIsTruthHoweverAColumnOfBooleansTellsIt) {
  EXPECT_EQ(Read(kBoolean, [] { return OfTruth(true); }), Value(true));
  EXPECT_EQ(Read(kBoolean, [] { return OfTruth(false); }), Value(false));
  EXPECT_EQ(Of(kBoolean, VT_I2, [](VARIANT& held) { V_I2(&held) = -1; }), Value(true));
  EXPECT_EQ(Of(kBoolean, VT_I4, [](VARIANT& held) { V_I4(&held) = 0; }), Value(false));
  EXPECT_EQ(Of(kBoolean, VT_NULL, [](VARIANT&) {}), Value(Null{}));
}

TEST(ComValues, ADateIsTheDayAndTheTime) {
  EXPECT_EQ(OfDate(32933.0), Value(DateTime{1990, 3, 1}));
  EXPECT_EQ(OfDate(32933.75), Value(DateTime{1990, 3, 1, 18, 0, 0}));
  EXPECT_EQ(OfDate(32933.0 + 1.0 / 86400), Value(DateTime{1990, 3, 1, 0, 0, 1}));
  EXPECT_EQ(OfDate(1.0), Value(DateTime{1899, 12, 31}));
  EXPECT_EQ(OfDate(0.25), Value(DateTime{1899, 12, 30, 6, 0, 0}));
  EXPECT_EQ(OfDate(-1.0), Value(DateTime{1899, 12, 29}));
  EXPECT_EQ(OfDate(-657434.0), Value(DateTime{100, 1, 1}));
  EXPECT_EQ(OfDate(2958465.0), Value(DateTime{9999, 12, 31}));
  EXPECT_EQ(tests::NumberOfFailure([] { OfDate(2958466.0); }), environment::kTypeMismatch);
}

TEST(ComValues, TextIsTextToItsLastCharacter) {
  const auto text = [](const std::string& words) {
    return Read(kVarWChar, [&] { return Variant::OfText(words); });
  };
  EXPECT_EQ(text("陆怀谷"), Value("陆怀谷"));
  EXPECT_EQ(text("𠮷野"), Value("𠮷野"));
  EXPECT_EQ(text(""), Value(""));
  EXPECT_EQ(text(std::string("a\0b", 3)), Value(std::string("a\0b", 3)));
  EXPECT_EQ(text(" a \r\n"), Value(" a \r\n"));
  EXPECT_EQ(Of(kVarWChar, VT_BSTR, [](VARIANT& held) { V_BSTR(&held) = nullptr; }), Value(""));
}

TEST(ComValues, NothingIsNull) {
  EXPECT_EQ(Of(kVarWChar, VT_NULL, [](VARIANT&) {}), Value(Null{}));
  EXPECT_EQ(Of(kCurrency, VT_EMPTY, [](VARIANT&) {}), Value(Null{}));
  EXPECT_EQ(Of(kLongVarBinary, VT_ARRAY | VT_UI1,
               [](VARIANT& held) {
                 SAFEARRAYBOUND bound = {4, 0};
                 V_ARRAY(&held) = SafeArrayCreate(VT_UI1, 1, &bound);
               }),
            Value(Null{}))
      << "bytes";
}

}  // namespace
}  // namespace dossierkit::com
