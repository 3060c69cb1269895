#include "tests/adapters/com/stand_in.h"

#include <cwchar>
#include <optional>

#include "platform/ado/snapshot.h"
#include "platform/environment/failure.h"

namespace dossierkit::com {
namespace {

using environment::DateTime;
using environment::Failure;
using environment::Value;

Variant OfValue(const Value& value) {
  Variant variant;
  VARIANT& held = variant.Get();
  if (value.IsNull()) {
    V_VT(&held) = VT_NULL;
  } else if (const auto* truth = value.As<bool>()) {
    V_VT(&held) = VT_BOOL;
    V_BOOL(&held) = *truth ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (const auto* number = value.As<std::int64_t>()) {
    V_VT(&held) = VT_I8;
    V_I8(&held) = *number;
  } else if (const auto* floating = value.As<double>()) {
    V_VT(&held) = VT_R8;
    V_R8(&held) = *floating;
  } else if (const auto* date = value.As<DateTime>()) {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(date->year);
    time.wMonth = static_cast<WORD>(date->month);
    time.wDay = static_cast<WORD>(date->day);
    time.wHour = static_cast<WORD>(date->hour);
    time.wMinute = static_cast<WORD>(date->minute);
    time.wSecond = static_cast<WORD>(date->second);
    V_VT(&held) = VT_DATE;
    SystemTimeToVariantTime(&time, &V_DATE(&held));
  } else if (const auto* text = value.As<std::string>()) {
    return Variant::OfText(*text);
  }
  return variant;
}

Variant OfBoolean(bool truth) { return OfValue(truth); }

Variant OfObject(IDispatch* object) {
  Variant variant;
  V_VT(&variant.Get()) = VT_DISPATCH;
  V_DISPATCH(&variant.Get()) = object;
  return variant;
}

LONG TypeOf(const ado::Column& column) {
  if (!column.format.empty()) return 202;
  switch (column.kind) {
    case ado::ColumnKind::kText: return 202;
    case ado::ColumnKind::kInteger: return 20;
    case ado::ColumnKind::kFloating: return 5;
    case ado::ColumnKind::kBoolean: return 11;
    case ado::ColumnKind::kDate: return 7;
    case ado::ColumnKind::kUnknown: break;
  }
  return 12;
}

class Field : public LateObject {
 public:
  explicit Field(const ado::Column& column) {
    Has(L"Name", [name = column.name](const Arguments&) { return Variant::OfText(name); });
    Has(L"Type", [type = TypeOf(column)](const Arguments&) { return Variant::OfInteger(type); });
  }
};

class Fields : public LateObject {
 public:
  explicit Fields(std::shared_ptr<ado::Snapshot> rows) {
    Has(L"Count",
        [rows](const Arguments&) { return Variant::OfInteger(static_cast<LONG>(rows->ColumnCount())); });
    Has(L"Item", [rows](const Arguments& arguments) {
      return OfObject(new Field(rows->ColumnAt(static_cast<std::size_t>(V_I4(arguments.at(0))))));
    });
  }
};

class StandInRecordset : public LateObject {
 public:
  StandInRecordset(ado::Snapshot rows, std::function<void(const std::string&)> count)
      : rows_(std::make_shared<ado::Snapshot>(std::move(rows))), open_(rows_->ColumnCount() > 0) {
    Has(L"State", [this](const Arguments&) { return Variant::OfInteger(open_ ? 1 : 0); });
    Has(L"Fields", [this](const Arguments&) { return OfObject(new Fields(rows_)); });
    Has(L"EOF", [this](const Arguments&) { return OfBoolean(next_ >= rows_->RowCount()); });
    Has(L"GetRows", [this, count](const Arguments& arguments) {
      count("GetRows");
      return GetRows(static_cast<std::size_t>(V_I4(arguments.at(0))));
    });
    Has(L"Close", [this, count](const Arguments&) {
      count("Close");
      open_ = false;
      return Variant();
    });
  }

 private:
  Variant GetRows(std::size_t most) {
    const std::size_t count = std::min(most, rows_->RowCount() - next_);
    SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(rows_->ColumnCount()), 0}, {static_cast<ULONG>(count), 0}};
    Variant block;
    V_VT(&block.Get()) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&block.Get()) = SafeArrayCreate(VT_VARIANT, 2, bounds);
    for (std::size_t row = 0; row < count; ++row) {
      for (std::size_t column = 0; column < rows_->ColumnCount(); ++column) {
        LONG place[] = {static_cast<LONG>(column), static_cast<LONG>(row)};
        Variant value = OfValue(rows_->ValueAt(next_ + row, column));
        SafeArrayPutElement(V_ARRAY(&block.Get()), place, &value.Get());
      }
    }
    next_ += count;
    return block;
  }

  std::shared_ptr<ado::Snapshot> rows_;
  std::size_t next_ = 0;
  bool open_;
};

}  // namespace

HRESULT LateObject::QueryInterface(REFIID wanted, void** object) {
  *object = wanted == IID_IUnknown || wanted == IID_IDispatch ? this : nullptr;
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG LateObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT LateObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT LateObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (count != 1) return E_INVALIDARG;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    if (_wcsicmp(members_[i].first.c_str(), names[0]) != 0) continue;
    ids[0] = static_cast<DISPID>(i + 1);
    return S_OK;
  }
  return DISP_E_UNKNOWNNAME;
}

HRESULT LateObject::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                           EXCEPINFO* info, UINT*) {
  Arguments arguments;
  for (UINT i = parameters->cArgs; i > 0; --i) arguments.push_back(&parameters->rgvarg[i - 1]);
  try {
    if (on_any_call) on_any_call();
    Variant answer = members_.at(static_cast<std::size_t>(member - 1)).second(arguments);
    if (result) std::swap(*result, answer.Get());
    return S_OK;
  } catch (const Failure& failure) {
    info->scode = failure.number() < 0
                      ? static_cast<SCODE>(failure.number())
                      : static_cast<SCODE>(0x800A0000UL | static_cast<ULONG>(failure.number()));
    info->bstrDescription = Bstr(failure.description()).Release();
    info->bstrSource = Bstr("StandIn").Release();
    return DISP_E_EXCEPTION;
  }
}

StandInConnection::StandInConnection(std::shared_ptr<ado::Connection> connection)
    : connection_(std::move(connection)) {
  const auto has = [this](const wchar_t* name, Member member) {
    Has(name, [this, called = Utf8(name), member](const Arguments& arguments) {
      ++calls;
      if (on_call) on_call(called);
      return member(arguments);
    });
  };
  has(L"State", [this](const Arguments&) { return Variant::OfInteger(connection_->IsOpen() ? 1 : 0); });
  has(L"Execute", [this](const Arguments& arguments) { return Execute(arguments); });
  has(L"BeginTrans", [this](const Arguments&) { return Variant::OfInteger(connection_->BeginTrans()); });
  has(L"CommitTrans", [this](const Arguments&) {
    connection_->CommitTrans();
    return Variant();
  });
  has(L"RollbackTrans", [this](const Arguments&) {
    connection_->RollbackTrans();
    return Variant();
  });
}

Variant StandInConnection::Execute(const Arguments& arguments) {
  return OfObject(
      new StandInRecordset(connection_->Run(TextOf(V_BSTR(arguments.at(0)))), [this](const auto& called) {
        ++calls;
        if (on_call) on_call(called);
      }));
}

}  // namespace dossierkit::com
