#include <algorithm>

#include "pages/designs/designs.h"
#include "pages/page_design.h"
#include "platform/environment/text.h"

namespace dossierkit {

const std::vector<const PageDesign*>& PageDesigns() {
  static const std::vector<const PageDesign*> all = {
      &designs::DesignA01(), &designs::DesignA02(), &designs::DesignA03(), &designs::DesignA04(),
      &designs::DesignA05(), &designs::DesignA06(), &designs::DesignA08(), &designs::DesignA09(),
      &designs::DesignA10(), &designs::DesignA11(), &designs::DesignA12(), &designs::DesignA13(),
      &designs::DesignA14(), &designs::DesignA15(), &designs::DesignA21(), &designs::DesignB01(),
  };
  return all;
}

const PageDesign* FindPageDesign(std::string_view set) {
  const auto& all = PageDesigns();
  const auto found = std::ranges::find_if(
      all, [set](const PageDesign* design) { return environment::EqualIgnoringCase(design->set, set); });
  return found == all.end() ? nullptr : *found;
}

}  // namespace dossierkit
