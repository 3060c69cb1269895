#include "codes/lookup_code.h"

#include <exception>

#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

struct Found {
  std::string code;
  std::string caption;
  bool Whole() const { return !code.empty() && !caption.empty(); }
};

// Code and caption of the only row that the query gives; else leaves `found` as it was.
void ReadOnlyRow(const std::string& query, Found& found) {
  ado::Recordset rows;
  rows.Open(query, gConnection());
  if (rows.RecordCount() == 1) {
    found.caption = environment::TextOr(rows.Fields("dmcpt"), "");
    found.code = environment::TextOr(rows.Fields("DmCod"), "");
  }
  rows.Close();
}

std::string ExactQuery(const std::string& table, const std::string& text) {
  return "select * from " + table + " where dmattr =true and  (dmcod='" + text + "' or dmcpt ='" + text +
         "' or dmhnd='" + text + "')";
}

std::string LikeQuery(const std::string& table, const std::string& text) {
  return "select dmcod,dmcpt,iif(dmhnd is null, '',dmhnd) as dmhnd  from " + table +
         " where  dmattr =true and   dmcod<>''  and dmcpt<>'' " + MatchCondition(text) + "    order by dmcod";
}

}  // namespace

std::string MatchCondition(const std::string& text) {
  std::string pattern = "%";
  for (const std::string& character : environment::Characters(text)) pattern += character + "%";
  return "  and  ( DmCpt like '" + pattern + "' or   DmHnd like '" + pattern + "') ";
}

std::string LookupCode(cFieldItem& item, const std::string& text) {
  if (text.empty()) return "";
  try {
    Found found;
    ReadOnlyRow(ExactQuery(item.CodeTable, text), found);
    if (!found.Whole()) ReadOnlyRow(LikeQuery(item.CodeTable, text), found);
    if (found.Whole()) {
      item.Dmcod = found.code;
      item.Dmcpt = found.caption;
    }
    return found.caption;
  } catch (const std::exception& failure) {
    TheRuntime().desktop.MsgBox(failure.what(), toolkit::kExclamationIcon, "信息校对");
    return "";
  }
}

}  // namespace dossierkit
