#include "adapters/com/ado_connection.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <utility>

#include "adapters/com/failures.h"
#include "platform/environment/failure.h"

namespace dossierkit::com {
namespace {

using ado::ColumnKind;
using environment::Failure;

// Of the enumerations of ADO.
constexpr LONG kCommandText = 1;
constexpr LONG kOpen = 1;
constexpr LONG kRowsAtATime = 1000;

ColumnKind KindOf(LONG type) {
  switch (type) {
    case 11: return ColumnKind::kBoolean;
    case 2:   // 16 bits
    case 3:   // 32 bits
    case 16:  // 8 bits
    case 17:  // the same without a sign, up to 64 bits
    case 18:
    case 19:
    case 20:  // 64 bits
    case 21: return ColumnKind::kInteger;
    case 4:    // single
    case 5:    // double
    case 6:    // currency
    case 14:   // decimal
    case 131:  // numeric
    case 139: return ColumnKind::kFloating;
    case 7:    // a date of Automation
    case 133:  // a day
    case 135: return ColumnKind::kDate;
    case 8:    // BSTR
    case 72:   // GUID
    case 129:  // char and its kin
    case 130:
    case 200:
    case 201:
    case 202:
    case 203: return ColumnKind::kText;
    default: return ColumnKind::kUnknown;
  }
}

std::string IsoText(DATE date) {
  SYSTEMTIME time{};
  if (!VariantTimeToSystemTime(date, &time)) throw environment::MakeFailure(environment::kTypeMismatch);
  char text[40];
  int length = std::snprintf(text, sizeof text, "%04d-%02d-%02d", time.wYear, time.wMonth, time.wDay);
  if (time.wHour || time.wMinute || time.wSecond) {
    length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), " %02d:%02d:%02d",
                            time.wHour, time.wMinute, time.wSecond);
  }
  return {text, static_cast<std::size_t>(length)};
}

// A number of single precision with the digits that it was stored by: 0.1 and not 0.100000001490116.
double Widened(float number) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  double wide = 0;
  std::from_chars(digits, end, wide);
  return wide;
}

// The value as another type, in no language.
Variant As(const VARIANT& value, VARTYPE type) {
  Variant other;
  const HRESULT result =
      VariantChangeTypeEx(&other.Get(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, type);
  if (FAILED(result)) throw environment::MakeFailure(environment::kTypeMismatch);
  return other;
}

void Append(ado::Snapshot& rows, const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_EMPTY:
    case VT_NULL: return rows.AppendNull();
    case VT_BOOL: return rows.AppendInteger(V_BOOL(&value) ? 1 : 0);
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_I8: return rows.AppendInteger(V_I8(&As(value, VT_I8).Get()));
    case VT_UI8:
      if (V_UI8(&value) > static_cast<ULONGLONG>(std::numeric_limits<std::int64_t>::max()))
        throw environment::MakeFailure(environment::kOverflow);
      return rows.AppendInteger(static_cast<std::int64_t>(V_UI8(&value)));
    case VT_R4: return rows.AppendFloating(Widened(V_R4(&value)));
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL: return rows.AppendFloating(V_R8(&As(value, VT_R8).Get()));
    case VT_DATE: return rows.AppendText(IsoText(V_DATE(&value)));
    case VT_BSTR: return rows.AppendText(TextOf(V_BSTR(&value)));
    default: break;
  }
  // Bytes are neither shown nor searched by anybody here.
  if (V_ISARRAY(&value)) return rows.AppendNull();
  const Variant text = As(value, VT_BSTR);
  rows.AppendText(TextOf(V_BSTR(&text.Get())));
}

std::size_t LengthOf(SAFEARRAY* array, UINT dimension) {
  LONG first = 0;
  LONG last = -1;
  SafeArrayGetLBound(array, dimension, &first);
  SafeArrayGetUBound(array, dimension, &last);
  return static_cast<std::size_t>(last - first + 1);
}

// Appends what GetRows gave, fields by rows, and gives the number of rows.
std::size_t AppendBlock(ado::Snapshot& rows, const VARIANT& block) {
  SAFEARRAY* array = V_VT(&block) == (VT_ARRAY | VT_VARIANT) ? V_ARRAY(&block) : nullptr;
  if (!array || SafeArrayGetDim(array) != 2 || LengthOf(array, 1) != rows.ColumnCount()) {
    throw environment::MakeFailure(environment::kTypeMismatch);
  }
  VARIANT* cells = nullptr;
  const HRESULT result = SafeArrayAccessData(array, reinterpret_cast<void**>(&cells));
  if (FAILED(result)) throw FailureOf(result, nullptr);
  struct Access {
    SAFEARRAY* array;
    ~Access() { SafeArrayUnaccessData(array); }
  } access{array};
  const std::size_t count = LengthOf(array, 2);
  for (std::size_t i = 0; i < count * rows.ColumnCount(); ++i) Append(rows, cells[i]);
  return count;
}

ado::Snapshot Read(const LateBound& recordset) {
  ado::Snapshot rows;
  if (!(recordset.GetInteger(L"State") & kOpen)) return rows;  // a statement that gives no rows
  const LateBound fields = recordset.GetObject(L"Fields");
  const LONG count = fields.GetInteger(L"Count");
  for (LONG i = 0; i < count; ++i) {
    std::vector<Variant> index;
    index.push_back(Variant::OfInteger(i));
    const LateBound field = fields.GetObject(L"Item", std::move(index));
    rows.AddColumn({field.GetText(L"Name"), KindOf(field.GetInteger(L"Type")), {}});
  }
  while (!recordset.GetBoolean(L"EOF")) {
    std::vector<Variant> most;
    most.push_back(Variant::OfInteger(kRowsAtATime));
    const Variant block = recordset.Get(L"GetRows", std::move(most));
    if (AppendBlock(rows, block.Get()) == 0) break;
  }
  recordset.Get(L"Close");
  return rows;
}

}  // namespace

bool AdoConnection::IsOpen() const { return connection_.GetInteger(L"State") & kOpen; }

ado::Snapshot AdoConnection::Run(const std::string& statement) {
  try {
    std::vector<Variant> arguments;
    arguments.push_back(Variant::OfText(statement));
    arguments.push_back(Variant::Missing());
    arguments.push_back(Variant::OfInteger(kCommandText));
    return Read(connection_.GetObject(L"Execute", std::move(arguments)));
  } catch (const Failure& failure) {
    throw Failure(failure.number(), failure.description(), statement);
  }
}

std::int32_t AdoConnection::BeginTrans() {
  return static_cast<std::int32_t>(connection_.GetInteger(L"BeginTrans"));
}

void AdoConnection::CommitTrans() { connection_.Get(L"CommitTrans"); }

void AdoConnection::RollbackTrans() { connection_.Get(L"RollbackTrans"); }

Pointer<IDispatch> MakeUnopenedConnection() {
  CLSID identifier{};
  Pointer<IDispatch> connection;
  HRESULT result = CLSIDFromProgID(L"ADODB.Connection", &identifier);
  if (SUCCEEDED(result)) {
    result = CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, connection.PutVoid());
  }
  if (FAILED(result)) throw Failure(kCannotCreateObject, "ActiveX 部件不能创建对象");
  return connection;
}

}  // namespace dossierkit::com
