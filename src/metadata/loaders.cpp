#include "metadata/loaders.h"

#include "platform/ado/recordset.h"
#include "platform/environment/placed_failure.h"
#include "platform/environment/text.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

using environment::TextOf;
using environment::TextOr;

// Required: a counter of 16 bits, which fails (6) behind row 32,767.
std::int16_t Next(std::int16_t counter) { return environment::ToInt16(std::int64_t{counter} + 1); }

std::string MetadataQuery(const std::string& table) {
  return " select * from s_infoitem  where tblname ='" + table + "'";
}

// One row of s_infoitem as a field.
std::shared_ptr<cFieldItem> ReadItem(const ado::Recordset& row) {
  auto item = std::make_shared<cFieldItem>();
  item->TblName = TextOr(row.Fields("tblname"), "");
  item->ItemName = TextOr(row.Fields("ItemName"), "");
  item->ItemDesc = TextOr(row.Fields("ItemDesc"), "");
  item->FieldType = TextOr(row.Fields("FieldType"), "");
  item->FieldLength = TextOr(row.Fields("FieldLength"), "");
  item->CodeTable = TextOr(row.Fields("CodeTable"), "");
  item->Style = TextOr(row.Fields("style"), "");
  item->Check = TextOr(row.Fields("Check"), "");
  item->FldOrder = TextOr(row.Fields("FldOrder"), "");
  const auto width = row.Fields("FldWidth");
  item->FldWidth = width.IsNull() ? std::int16_t{2000} : environment::ToInt16(width);
  item->FldExplain = TextOr(row.Fields("FldExplain"), "");
  const auto may_be_empty = row.Fields("IsNUll");
  item->IsNUll = may_be_empty.IsNull() || environment::ToBoolean(may_be_empty);
  return item;
}

// The field whose row the metadata stand on, for a failure.
environment::Place PlaceOf(const std::string& table, const ado::Recordset& metadata) {
  return {table, TextOr(metadata.Fields("itemname"), ""), "读取字段的定义", MetadataQuery(table)};
}

void AddUnderItsKey(cFieldItems& items, std::shared_ptr<cFieldItem> item) {
  const std::string key = item->TblName + "_" + item->ItemName;
  items.Add(item, key);
}

// The value of the field in the record, and the caption of its code.
void ReadValue(cFieldItem& item, const ado::Recordset& record) {
  const auto value = record.Fields(item.ItemName);
  item.Dmcod = value.IsNull() ? environment::Value("") : value;
  if (item.CodeTable.empty()) {
    item.Dmcpt.clear();
    return;
  }
  ado::Recordset code;
  code.Open("select dmcpt from " + item.CodeTable + " where dmcod='" + TextOf(item.Dmcod) + "'",
            gConnection());
  if (code.RecordCount() > 0) item.Dmcpt = TextOr(code.Fields(0), "");
  code.Close();
}

}  // namespace

std::shared_ptr<cFieldItems> LoadFieldItems(const std::string& table) {
  auto items = std::make_shared<cFieldItems>();
  ado::Recordset metadata;
  metadata.Open(MetadataQuery(table), gConnection());
  const auto rows = environment::ToInt16(std::int64_t{metadata.RecordCount()});
  for (std::int16_t i = 1; i <= rows; i = Next(i)) {
    environment::At(PlaceOf(table, metadata), [&] { AddUnderItsKey(*items, ReadItem(metadata)); });
    metadata.MoveNext();
  }
  metadata.Close();
  return items;
}

std::shared_ptr<cFieldItems> LoadFieldValues(const std::string& table, const std::string& person,
                                             std::int16_t number) {
  auto items = std::make_shared<cFieldItems>();
  ado::Recordset metadata;
  metadata.Open(MetadataQuery(table), gConnection());
  const auto rows = environment::ToInt16(std::int64_t{metadata.RecordCount()});
  if (rows > 0) {
    ado::Recordset record;
    std::string query = "select * from " + table + " where a00 ='" + person + "'";
    if (number >= 1) query += " and " + table + "99=" + std::to_string(number);
    record.Open(query, gConnection());
    for (std::int16_t i = 1; i <= rows; i = Next(i)) {
      environment::At(PlaceOf(table, metadata), [&] {
        auto item = ReadItem(metadata);
        if (record.RecordCount() > 0) {
          environment::At({.doing = "读取字段的内容", .statement = query}, [&] { ReadValue(*item, record); });
        }
        AddUnderItsKey(*items, std::move(item));
      });
      metadata.MoveNext();
    }
    record.Close();
  }
  metadata.Close();
  return items;
}

std::string NewPersonId() {
  gConnection().Execute(" delete from S_GUID ");
  gConnection().Execute("insert into S_GUID(val) values('a')");
  const auto row = gConnection().Execute("select id from S_GUID where val='a'");
  return environment::Middle(TextOf(row->Fields(0)), 1, 36);
}

}  // namespace dossierkit
