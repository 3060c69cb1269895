// The record list of a page: its query, written from the metadata, and the grid bound to it.
#include "metadata/field_items.h"
#include "metadata/loaders.h"
#include "pages/ctrl_user.h"
#include "platform/environment/placed_failure.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

using environment::TextOf;

// One column of the list.
std::string SelectItem(const std::string& set, const ado::Recordset& column) {
  const std::string name = TextOf(column.Fields("itemname"));
  const std::string caption = TextOf(column.Fields("itemdesc"));
  const std::string code_table = TextOf(column.Fields("codetable"));
  const std::string style = TextOf(column.Fields("style"));
  if (!code_table.empty()) return code_table + "_" + name + ".dmcpt as " + caption;
  if (!style.empty()) return "format(" + set + "." + name + ",'" + style + "') as " + caption;
  return set + "." + name + " as " + caption;
}

// " from ", the set, and a join for each coded column; one opening parenthesis for each join.
std::string Source(const std::string& set, ado::Recordset& coded) {
  const std::int32_t count = coded.RecordCount();
  if (count == 0) return " from " + set;
  std::string source = " from " + std::string(static_cast<std::size_t>(count), '(') + " " + set;
  for (std::int32_t i = 1; i <= count; ++i) {
    const std::string table = TextOf(coded.Fields("codetable"));
    const std::string name = TextOf(coded.Fields("itemname"));
    const std::string alias = table + "_" + name;
    source += "  left join " + table + " " + alias + " on " + set + "." + name + "=" + alias + ".dmcod) ";
    coded.MoveNext();
  }
  return source;
}

}  // namespace

void ctrlUser::setDGItems() {
  mTrackMove_ = false;
  const std::string& set = wh_info_.TabId;
  if (set.empty()) return;
  ado::Recordset columns;
  columns.Open(
      "select itemname,itemdesc,iif(codetable is null,'',codetable) as codetable ,"
      "iif(style is null,'',style) as style ,iif(fldwidth is null,2000,fldwidth) as fldwidth from  "
      "s_infoitem where "
      "tblname ='" +
          set + "' and itemname <> 'A00' and itemname <>'' and itemdesc <>''   order by fldorder ",
      gConnection());
  std::string query;
  std::vector<std::int16_t> widths;
  const std::int32_t count = columns.RecordCount();
  if (count > 0) {
    for (std::int32_t i = 1; i <= count; ++i) {
      query += (query.empty() ? "select " : ", ") + SelectItem(set, columns);
      environment::At({set, TextOf(columns.Fields("itemname")), "读取记录列表的列宽"},
                      [&] { widths.push_back(environment::ToInt16(columns.Fields("fldwidth"))); });
      columns.MoveNext();
    }
    columns.Filter("codetable<>''");
    query += Source(set, columns);
  }
  columns.Close();
  if (!query.empty()) {
    query += " Where " + set + ".A00='" + wh_info_.personID + "' ";
    if (!wh_info_.FldOrder.empty() && wh_info_.IsMult) query += "order by " + wh_info_.FldOrder;
  }
  AdodcRs_ = std::make_shared<ado::Recordset>();
  hooks_.push_back(
      AdodcRs_->WillMove.Subscribe([this](std::int32_t reason, std::int32_t& status, ado::Recordset&) {
        AdodcRs_WillMove(reason, status);
      }));
  hooks_.push_back(AdodcRs_->MoveComplete.Subscribe(
      [this](std::int32_t, std::int32_t&, ado::Recordset&) { AdodcRs_MoveComplete(); }));
  environment::At({.set = set, .doing = "读取记录列表"}, [&] { AdodcRs_->Open(query, gConnection()); });
  DGItems_->SetDataSource(AdodcRs_);
  mTrackMove_ = true;
  if (AdodcRs_->RecordCount() >= 1) {
    AdodcRs_->MoveFirst();
  } else {
    field_items_ = LoadFieldItems(set);
    setCtrl(field_items_);
  }
  for (std::size_t i = 0; i < widths.size(); ++i) DGItems_->SetColumnWidth(i, static_cast<float>(widths[i]));
  DGItems_->SetVisible(wh_info_.IsMult);
  if (wh_info_.IsMult) MakeRoomForList();
}

}  // namespace dossierkit
