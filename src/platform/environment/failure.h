// Failures: the one exception type of the system, with the number and the words of the environment.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/environment/export.h"

namespace dossierkit::environment {

// A failure as the user reads it in a message box. `what()` is the description, in Chinese, UTF-8.
class DOSSIERKIT_EXPORT Failure : public std::runtime_error {
 public:
  // `number` follows the environment's and ADO's numbering; `statement` is the SQL text that failed,
  // or empty.
  Failure(int number, const std::string& description, std::string statement = {});

  int number() const { return number_; }
  std::string description() const { return what(); }
  const std::string& statement() const { return statement_; }

 private:
  int number_;
  std::string statement_;
};

// Numbers that the system and its ports raise.
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidUseOfNull = 94;
inline constexpr int kObjectUnloaded = 364;
inline constexpr int kInvalidPropertyValue = 380;
inline constexpr int kAlreadyShown = 400;
inline constexpr int kDuplicateKey = 457;
inline constexpr int kInvalidPicture = 481;
inline constexpr int kUnknownClass = 731;
inline constexpr int kInvalidArgument = 3001;
inline constexpr int kNoCurrentRow = 3021;
inline constexpr int kUnknownItem = 3265;
inline constexpr int kObjectClosed = 3704;
inline constexpr int kObjectOpen = 3705;
inline constexpr int kConnectionClosed = 3709;
inline constexpr int kNoTransaction = -2147168242;
inline constexpr int kNoSuchTable = -2147217865;
inline constexpr int kUnknownName = -2147217904;
inline constexpr int kSyntaxError = -2147217900;
inline constexpr int kDataMismatch = -2147217913;
inline constexpr int kEngineFailure = -2147467259;
inline constexpr int kIndexOutOfBounds = 35600;
inline constexpr int kElementNotFound = 35601;
inline constexpr int kKeyNotUnique = 35602;

// The failure of one of the numbers above, in the environment's own words.
Failure MakeFailure(int number, std::string statement = {});

}  // namespace dossierkit::environment
