// LateBound: an object of another program's, called by the names of its members.
#pragma once

#include <string>
#include <vector>

#include "adapters/com/pointers.h"

namespace dossierkit::com {

class LateBound {
 public:
  // Takes a reference of its own; null is no object.
  explicit LateBound(IDispatch* object) : object_(object) {}

  // A property or a function, with its arguments in their order. Throws a Failure: 91 without an object, 438
  // for a member that it does not have, else with the number and the words of the object.
  Variant Get(const wchar_t* member, std::vector<Variant> arguments = {}) const;
  // The same where an object must come of it.
  LateBound GetObject(const wchar_t* member, std::vector<Variant> arguments = {}) const;
  LONG GetInteger(const wchar_t* member) const;
  bool GetBoolean(const wchar_t* member) const;
  std::string GetText(const wchar_t* member) const;

  IDispatch* Get() const { return object_.Get(); }

 private:
  Pointer<IDispatch> object_;
};

}  // namespace dossierkit::com
