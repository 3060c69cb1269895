// PeopleModel: the persons of the database as a table, narrowed by a part of the name.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

namespace dossierkit::host {

// Reads all persons at once; a key in the search then runs no statement. Rows stand in the order of
// A0199. No signals of its own: it resets the model.
class PeopleModel : public QAbstractTableModel {
 public:
  // Reads the persons anew; the filter stays. Throws a Failure, and keeps what it had then.
  void Load(ado::Connection& connection);
  // Only the persons whose name holds `typed` (case ignored, outer blanks too); all for an empty text.
  // Returns where the person of `row` stands now, or -1.
  int SetFilter(const QString& typed, int row = -1);

  // A00 of a row, from 0.
  std::string PersonAt(int row) const;
  // A0136 of a row: 1, 2, 3, or 0 where it holds anything else.
  int PersonTypeAt(int row) const;
  // The row of a person, or -1 where the filter leaves him out. Looks at all of them.
  int RowOf(const std::string& person) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void Widen();
  void Narrow();
  std::string TextAt(int row, std::size_t column) const;

  std::shared_ptr<ado::Recordset> people_;
  QString names_;                // of all persons, case folded, one behind the other
  std::vector<qsizetype> ends_;  // of each name in names_
  std::vector<int> shown_;       // the persons that the filter leaves, from 0
  QString filter_;               // case folded
};

}  // namespace dossierkit::host
