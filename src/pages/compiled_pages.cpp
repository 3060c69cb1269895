#include "pages/compiled_pages.h"

#include "pages/designs/layout.h"
#include "pages/page_design.h"

namespace dossierkit {
namespace {

CompiledPage::Records RecordsOf(const PageDesign& design) {
  if (design.grid.width == designs::kStubGrid.width) return CompiledPage::Records::kOne;
  return design.grid_visible ? CompiledPage::Records::kMany : CompiledPage::Records::kEither;
}

}  // namespace

std::vector<CompiledPage> CompiledPages() {
  std::vector<CompiledPage> pages;
  for (const PageDesign* design : PageDesigns()) {
    CompiledPage& page = pages.emplace_back();
    page.set = design->set;
    page.records = RecordsOf(*design);
    for (const FieldDesign& field : design->fields) {
      page.fields.push_back(
          {std::string(field.field.substr(design->set.size() + 1)), field.kind == FieldDesign::Kind::kMask});
    }
  }
  return pages;
}

}  // namespace dossierkit
