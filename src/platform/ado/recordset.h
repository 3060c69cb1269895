// Recordset: a static snapshot with a cursor and the notifications around its moves.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/connection.h"
#include "platform/ado/snapshot.h"
#include "platform/environment/event.h"
#include "platform/environment/value.h"

namespace dossierkit::ado {

enum CursorType { kOpenStatic = 3 };
enum LockType { kLockUnspecified = -1 };
enum CommandType { kCmdText = 1 };
enum ObjectState { kStateClosed = 0, kStateOpen = 1 };
enum EventStatus { kStatusOk = 1, kStatusCancel = 4 };
enum EventReason { kReasonMove = 10, kReasonMoveFirst = 12, kReasonMoveNext = 13, kReasonMovePrevious = 14 };

// One class for all engines. Rows are numbered from 1 in AbsolutePosition (-1 without rows, -2 at
// BOF, -3 at EOF). Everything but Open, State and the events fails (3704) while closed.
class Recordset : public std::enable_shared_from_this<Recordset> {
 public:
  Recordset() = default;
  // An open recordset over rows already read.
  explicit Recordset(Snapshot rows);
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // Runs `source` (not empty, else 3001) on `connection` and stands on the first row. Raises nothing.
  void Open(const std::string& source, Connection& connection, CursorType = kOpenStatic,
            LockType = kLockUnspecified, CommandType = kCmdText);
  void Close();
  ObjectState State() const { return state_; }

  std::int32_t RecordCount() const;
  bool BOF() const;
  bool EOF_() const;
  std::int32_t AbsolutePosition() const;
  void SetAbsolutePosition(std::int32_t position);
  void MoveFirst();
  void MoveNext();
  void MovePrevious();

  // Only the rows whose text column is not empty: "column<>''", or "" for all rows. Stands on the
  // first row left. Throws 3001 for any other filter.
  void Filter(const std::string& filter);

  // The value of a column in the current row. Throws 3021 without a row, 3265 for an unknown column.
  environment::Value Fields(std::string_view name) const;
  environment::Value Fields(std::size_t index) const;

  std::size_t FieldCount() const;
  const std::string& FieldName(std::size_t index) const;
  // A value of the row at `position` (from 1) without moving the cursor; for a bound grid.
  environment::Value ValueAt(std::int32_t position, std::size_t index) const;

  // Raised by every move and every assignment of AbsolutePosition, in this pair, also when the row
  // stays the same. A subscriber that sets the status to kStatusCancel keeps the cursor where it is;
  // MoveComplete follows all the same, with kStatusCancel.
  environment::Event<std::int32_t, std::int32_t&, Recordset&> WillMove;
  environment::Event<std::int32_t, std::int32_t&, Recordset&> MoveComplete;

 private:
  void RequireOpen() const;
  std::size_t CurrentRow() const;
  void MoveTo(std::int64_t index, EventReason reason);

  Snapshot rows_;
  std::vector<std::uint32_t> visible_;  // row indices left by the filter; unused while not filtered
  bool filtered_ = false;
  std::int64_t index_ = -1;  // -1 is BOF, RecordCount() is EOF
  ObjectState state_ = kStateClosed;
};

}  // namespace dossierkit::ado
