#include "host/people_model.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

// The columns of the statement: those of the table come first.
enum Column : std::size_t { kName, kShownColumns = 4, kPerson = kShownColumns, kType };
constexpr auto kStatement = "select A0101,A0104,A0115,A0109,A00,A0136 from a01 order by A0199";
constexpr std::array<const char*, kShownColumns> kHeadings = {"姓名", "出生日期", "工作单位", "所学专业"};

}  // namespace

void PeopleModel::Load(ado::Connection& connection) {
  const auto people = connection.Execute(kStatement);
  const int count = people->RecordCount();
  QString names;
  std::vector<qsizetype> ends;
  ends.reserve(static_cast<std::size_t>(count));
  for (int person = 1; person <= count; ++person) {
    names += QString::fromStdString(environment::TextOr(people->ValueAt(person, kName), "")).toCaseFolded();
    ends.push_back(names.size());
  }
  beginResetModel();
  people_ = people;
  names_ = std::move(names);
  ends_ = std::move(ends);
  Widen();
  Narrow();
  endResetModel();
}

int PeopleModel::SetFilter(const QString& typed, int row) {
  const QString folded = typed.trimmed().toCaseFolded();
  if (folded == filter_) return row;
  const int person = row < 0 ? -1 : shown_.at(static_cast<std::size_t>(row));
  beginResetModel();
  // Whoever holds the longer text is among those who hold the shorter one.
  if (!folded.contains(filter_)) Widen();
  filter_ = folded;
  Narrow();
  endResetModel();
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), person);
  return found == shown_.end() || *found != person ? -1 : static_cast<int>(found - shown_.begin());
}

void PeopleModel::Widen() {
  shown_.resize(ends_.size());
  std::iota(shown_.begin(), shown_.end(), 0);
}

void PeopleModel::Narrow() {
  if (filter_.isEmpty()) return;
  const QStringView names(names_);
  std::erase_if(shown_, [&](int person) {
    const auto at = static_cast<std::size_t>(person);
    const qsizetype begin = person == 0 ? 0 : ends_[at - 1];
    return !names.sliced(begin, ends_[at] - begin).contains(filter_);
  });
}

std::string PeopleModel::TextAt(int row, std::size_t column) const {
  return environment::TextOr(people_->ValueAt(shown_.at(static_cast<std::size_t>(row)) + 1, column), "");
}

std::string PeopleModel::PersonAt(int row) const { return TextAt(row, kPerson); }

int PeopleModel::PersonTypeAt(int row) const {
  const std::string type = TextAt(row, kType);
  return type == "1" || type == "2" || type == "3" ? type[0] - '0' : 0;
}

int PeopleModel::RowOf(const std::string& person) const {
  for (int row = 0; row < rowCount(); ++row) {
    if (PersonAt(row) == person) return row;
  }
  return -1;
}

int PeopleModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int PeopleModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kHeadings.size());
}

QVariant PeopleModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole) return {};
  return QString::fromStdString(TextAt(index.row(), static_cast<std::size_t>(index.column())));
}

QVariant PeopleModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return QString(kHeadings.at(static_cast<std::size_t>(section)));
}

}  // namespace dossierkit::host
