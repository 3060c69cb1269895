// The designs of the sixteen pages, each in a file of its own.
#pragma once

#include "pages/page_design.h"

namespace dossierkit::designs {

const PageDesign& DesignA01();
const PageDesign& DesignA02();
const PageDesign& DesignA03();
const PageDesign& DesignA04();
const PageDesign& DesignA05();
const PageDesign& DesignA06();
const PageDesign& DesignA08();
const PageDesign& DesignA09();
const PageDesign& DesignA10();
const PageDesign& DesignA11();
const PageDesign& DesignA12();
const PageDesign& DesignA13();
const PageDesign& DesignA14();
const PageDesign& DesignA15();
const PageDesign& DesignA21();
const PageDesign& DesignB01();

}  // namespace dossierkit::designs
