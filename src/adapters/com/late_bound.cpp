#include "adapters/com/late_bound.h"

#include <algorithm>

#include "adapters/com/failures.h"
#include "platform/environment/failure.h"

namespace dossierkit::com {
namespace {

// The value as another type; 13 where it cannot be that.
Variant As(Variant value, VARTYPE type) {
  const HRESULT result = VariantChangeType(&value.Get(), &value.Get(), 0, type);
  if (FAILED(result)) throw environment::MakeFailure(environment::kTypeMismatch);
  return value;
}

}  // namespace

Variant LateBound::Get(const wchar_t* member, std::vector<Variant> arguments) const {
  if (!object_) throw environment::MakeFailure(environment::kObjectNotSet);
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR name = const_cast<LPOLESTR>(member);
  HRESULT result = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(result)) throw FailureOf(result, nullptr);

  // The last argument stands first. The copies own nothing.
  std::vector<VARIANTARG> reversed;
  std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed),
                 [](const Variant& argument) { return argument.Get(); });
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  Variant answer;
  EXCEPINFO info{};
  result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                           &parameters, &answer.Get(), &info, nullptr);
  if (FAILED(result)) throw FailureOf(result, &info);
  return answer;
}

LateBound LateBound::GetObject(const wchar_t* member, std::vector<Variant> arguments) const {
  Variant answer = Get(member, std::move(arguments));
  if (V_VT(&answer.Get()) != VT_DISPATCH) answer = As(std::move(answer), VT_DISPATCH);
  return LateBound(V_DISPATCH(&answer.Get()));
}

LONG LateBound::GetInteger(const wchar_t* member) const {
  const Variant answer = As(Get(member), VT_I4);
  return V_I4(&answer.Get());
}

bool LateBound::GetBoolean(const wchar_t* member) const {
  const Variant answer = As(Get(member), VT_BOOL);
  return V_BOOL(&answer.Get()) != VARIANT_FALSE;
}

std::string LateBound::GetText(const wchar_t* member) const {
  const Variant answer = As(Get(member), VT_BSTR);
  return TextOf(V_BSTR(&answer.Get()));
}

}  // namespace dossierkit::com
