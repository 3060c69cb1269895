#include "pages/compiled_pages.h"

#include "pages/page_design.h"

namespace dossierkit {

std::vector<CompiledPage> CompiledPages() {
  std::vector<CompiledPage> pages;
  for (const PageDesign* design : PageDesigns()) {
    CompiledPage& page = pages.emplace_back();
    page.set = design->set;
    for (const FieldDesign& field : design->fields) {
      page.fields.push_back(
          {std::string(field.field.substr(design->set.size() + 1)), field.kind == FieldDesign::Kind::kMask});
    }
  }
  return pages;
}

}  // namespace dossierkit
