// Where everything on the sixteen pages stands, in pixels of the page at 96 dpi: a slip moves nothing unseen.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

struct Places {
  const char* set;
  const char* places;
};

// The page as it is designed: the name, left, top, width and height of each control, in the order of
// creation.
std::string PlacesOf(ctrlUser& page) {
  std::ostringstream lines;
  for (const auto& control : page.Controls()) {
    if (control->GetKind() == toolkit::Kind::kCommonDialog) continue;
    toolkit::Rect place = control->Place();
    for (const toolkit::Control* in = control->Container(); in != &page; in = in->Container()) {
      place.left += in->Place().left;
      place.top += in->Place().top;
    }
    lines << control->Name();
    for (const int twips : {place.left, place.top, place.width, place.height}) {
      EXPECT_EQ(twips % 15, 0) << control->Name() << " stands between two pixels";
      lines << ' ' << twips / 15;
    }
    lines << '\n';
  }
  return lines.str();
}

// clang-format off
const Places kPlaces[] = {
    {"A01",
     "A01_A0101_c 14 50 80 20\n"
     "A01_A0101_v 98 48 154 24\n"
     "A01_A0102_c 268 50 80 20\n"
     "A01_A0102_v 352 48 121 24\n"
     "A01_A0103_c 14 83 80 20\n"
     "A01_A0103_v 98 81 154 24\n"
     "A01_A0114_c 268 83 80 20\n"
     "A01_A0114_v 352 81 121 24\n"
     "A01_A0104_c 14 116 80 20\n"
     "A01_A0104_v 98 114 124 24\n"
     "A01_A0105_c 268 116 80 20\n"
     "A01_A0105_v 352 114 121 24\n"
     "A01_A0106_c 14 149 80 20\n"
     "A01_A0106_v 98 147 154 24\n"
     "A01_A0107_c 268 149 80 20\n"
     "A01_A0107_v 352 147 121 24\n"
     "A01_A0140_c 14 182 80 20\n"
     "A01_A0140_v 98 180 375 24\n"
     "A01_A0108_c 14 215 80 20\n"
     "A01_A0108_v 98 213 96 24\n"
     "A01_A0109_c 268 215 80 20\n"
     "A01_A0109_v 352 213 121 24\n"
     "A01_A0110_c 14 248 80 20\n"
     "A01_A0110_v 98 246 154 24\n"
     "A01_A0116_c 268 248 80 20\n"
     "A01_A0116_v 352 246 96 24\n"
     "A01_A0115_c 14 281 80 20\n"
     "A01_A0115_v 98 279 512 24\n"
     "A01_A0113_c 14 314 80 20\n"
     "A01_A0113_v 98 312 154 24\n"
     "A01_A0121_c 268 314 80 20\n"
     "A01_A0121_v 352 312 258 24\n"
     "A01_A0117_c 14 347 80 20\n"
     "A01_A0117_v 98 345 75 24\n"
     "A01_A0118_c 268 347 80 20\n"
     "A01_A0118_v 352 345 258 24\n"
     "A01_A0119_c 14 380 80 20\n"
     "A01_A0119_v 98 378 154 24\n"
     "A01_A0120_c 268 380 80 20\n"
     "A01_A0120_v 352 378 258 24\n"
     "A01_A0112_c 14 413 80 20\n"
     "A01_A0112_v 98 411 154 24\n"
     "A01_A0122_c 268 413 80 20\n"
     "A01_A0122_v 352 411 258 24\n"
     "A01_A0123_c 14 446 80 20\n"
     "A01_A0123_v 98 444 154 24\n"
     "A01_A0124_c 268 446 80 20\n"
     "A01_A0124_v 352 444 258 24\n"
     "A01_A0125_c 14 479 80 20\n"
     "A01_A0125_v 98 477 154 24\n"
     "A01_A0128_c 268 479 80 20\n"
     "A01_A0128_v 352 477 58 24\n"
     "A01_A0129_c 14 512 80 20\n"
     "A01_A0129_v 98 510 58 24\n"
     "A01_A0127_c 268 512 80 20\n"
     "A01_A0127_v 352 510 58 24\n"
     "A01_A0131_c 14 545 80 20\n"
     "A01_A0131_v 98 543 154 24\n"
     "DGItems 0 0 16 16\n"
     "labOpt 640 4 184 20\n"
     "Line1 640 36 184 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
     "frmBasicInfo 0 0 624 592\n"
     "imgPerson 489 48 121 159\n"
     "cmdAddPhoto 489 216 121 26\n"
    },
    {"A02",
     "A02_A0201_c 0 50 80 20\n"
     "A02_A0201_v 84 48 96 24\n"
     "A02_A0201A_c 320 50 80 20\n"
     "A02_A0201A_v 404 48 96 24\n"
     "A02_A0202_c 0 83 80 20\n"
     "A02_A0202_v 84 81 540 24\n"
     "A02_A0203_c 0 116 80 20\n"
     "A02_A0203_v 84 114 220 24\n"
     "A02_A0204_c 320 116 80 20\n"
     "A02_A0204_v 404 114 220 24\n"
     "DGItems 0 154 624 438\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A03",
     "A03_A0301_c 0 50 80 20\n"
     "A03_A0301_v 84 48 96 24\n"
     "A03_A0301A_c 320 50 80 20\n"
     "A03_A0301A_v 404 48 96 24\n"
     "A03_A0302_c 0 83 80 20\n"
     "A03_A0302_v 84 81 540 24\n"
     "A03_A0304_c 0 116 80 20\n"
     "A03_A0304_v 84 114 220 24\n"
     "A03_A0303_c 320 116 80 20\n"
     "A03_A0303_v 404 114 220 24\n"
     "DGItems 0 154 624 438\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A04",
     "A04_A0401_c 0 50 80 20\n"
     "A04_A0401_v 84 48 96 24\n"
     "A04_A0402_c 320 50 80 20\n"
     "A04_A0402_v 404 48 96 24\n"
     "A04_A0403_c 0 83 80 20\n"
     "A04_A0403_v 84 81 540 24\n"
     "A04_A0404_c 0 116 80 20\n"
     "A04_A0404_v 84 114 220 24\n"
     "DGItems 0 154 624 438\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A05",
     "A05_A0501_c 0 50 80 20\n"
     "A05_A0501_v 84 48 96 24\n"
     "A05_A0502_c 320 50 80 20\n"
     "A05_A0502_v 404 48 96 24\n"
     "A05_A0503_c 0 83 80 20\n"
     "A05_A0503_v 84 81 540 24\n"
     "A05_A0506_c 0 116 80 20\n"
     "A05_A0506_v 84 114 220 24\n"
     "A05_A0504_c 320 116 80 20\n"
     "A05_A0504_v 404 114 220 24\n"
     "A05_A0505_c 0 149 80 20\n"
     "A05_A0505_v 84 147 540 123\n"
     "DGItems 0 286 624 306\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A06",
     "A06_A0601_c 0 50 80 20\n"
     "A06_A0601_v 84 48 96 24\n"
     "A06_A0603_c 0 83 80 20\n"
     "A06_A0603_v 84 81 540 24\n"
     "A06_A0602_c 0 116 80 20\n"
     "A06_A0602_v 84 114 220 24\n"
     "A06_A0604_c 320 116 80 20\n"
     "A06_A0604_v 404 114 220 24\n"
     "A06_A0605_c 0 149 80 20\n"
     "A06_A0605_v 84 147 540 24\n"
     "DGItems 0 187 624 405\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A08",
     "A08_A0801_c 0 50 104 20\n"
     "A08_A0801_v 108 48 516 24\n"
     "A08_A0802_c 0 83 104 20\n"
     "A08_A0802_v 108 81 96 24\n"
     "A08_A0803_c 0 116 104 20\n"
     "A08_A0803_v 108 114 516 24\n"
     "A08_A0804_c 0 149 104 20\n"
     "A08_A0804_v 108 147 516 24\n"
     "A08_A0806_c 0 182 104 20\n"
     "A08_A0806_v 108 180 196 24\n"
     "A08_A0805_c 320 182 104 20\n"
     "A08_A0805_v 428 180 196 24\n"
     "DGItems 0 220 624 372\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A09",
     "A09_A0901_c 0 50 80 20\n"
     "A09_A0901_v 84 48 540 24\n"
     "A09_A0902_c 0 83 80 20\n"
     "A09_A0902_v 84 81 540 24\n"
     "A09_A0904_c 0 116 80 20\n"
     "A09_A0904_v 84 114 220 24\n"
     "A09_A0905_c 320 116 80 20\n"
     "A09_A0905_v 404 114 58 24\n"
     "A09_A0906_c 0 149 80 20\n"
     "A09_A0906_v 84 147 220 24\n"
     "A09_A0907_c 320 149 80 20\n"
     "A09_A0907_v 404 147 58 24\n"
     "A09_A0908_c 0 182 80 20\n"
     "A09_A0908_v 84 180 220 24\n"
     "A09_A0909_c 320 182 80 20\n"
     "A09_A0909_v 404 180 220 24\n"
     "A09_A0910_c 0 215 80 20\n"
     "A09_A0910_v 84 213 220 24\n"
     "DGItems 0 253 624 339\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A10",
     "A10_A1001_c 0 50 80 20\n"
     "A10_A1001_v 84 48 540 24\n"
     "A10_A1002_c 0 83 80 20\n"
     "A10_A1002_v 84 81 58 24\n"
     "A10_A1003_c 320 83 80 20\n"
     "A10_A1003_v 404 81 220 24\n"
     "A10_A1005_c 0 116 80 20\n"
     "A10_A1005_v 84 114 220 24\n"
     "A10_A1004_c 320 116 80 20\n"
     "A10_A1004_v 404 114 58 24\n"
     "A10_A1006_c 0 149 80 20\n"
     "A10_A1006_v 84 147 540 24\n"
     "A10_A1007_v 84 180 540 123\n"
     "Label5 0 182 80 20\n"
     "DGItems 0 319 624 273\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A11",
     "A11_A1101_c 0 50 104 20\n"
     "A11_A1101_v 108 48 516 24\n"
     "A11_A1102_c 0 83 104 20\n"
     "A11_A1102_v 108 81 58 24\n"
     "A11_A1103_c 320 83 104 20\n"
     "A11_A1103_v 428 81 196 24\n"
     "A11_A1104_c 0 116 104 20\n"
     "A11_A1104_v 108 114 516 156\n"
     "DGItems 0 286 624 306\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A12",
     "A12_A1201_v 0 92 624 500\n"
     "A12_A1201_cc 0 48 624 40\n"
     "DGItems 0 0 16 16\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A13",
     "A13_A1302_c 0 50 104 20\n"
     "A13_A1302_v 108 48 58 24\n"
     "A13_A1303_c 320 50 104 20\n"
     "A13_A1303_v 428 48 58 24\n"
     "A13_A1301_c 0 83 104 20\n"
     "A13_A1301_v 108 81 58 24\n"
     "A13_A1304_c 320 83 104 20\n"
     "A13_A1304_v 428 81 58 24\n"
     "A13_A1305_v 0 138 624 454\n"
     "A13_A1305_cc 0 114 624 20\n"
     "DGItems 0 0 16 16\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A14",
     "A14_A1401_v 0 72 624 520\n"
     "A14_A1401_cc 0 48 624 20\n"
     "DGItems 0 0 16 16\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A15",
     "A15_A1501_c 0 50 80 20\n"
     "A15_A1501_v 84 48 540 24\n"
     "A15_A1502_c 0 83 80 20\n"
     "A15_A1502_v 84 81 540 24\n"
     "A15_A1503_c 0 116 80 20\n"
     "A15_A1503_v 84 114 540 24\n"
     "A15_A1505_c 0 149 80 20\n"
     "A15_A1505_v 84 147 540 24\n"
     "A15_A1504_c 0 182 80 20\n"
     "A15_A1504_v 84 180 540 123\n"
     "DGItems 0 319 624 273\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"A21",
     "A21_A2111_c 0 50 80 20\n"
     "A21_A2111_v 84 48 220 24\n"
     "A21_A2107_c 320 50 80 20\n"
     "A21_A2107_v 404 48 220 24\n"
     "A21_A2101_c 0 83 80 20\n"
     "A21_A2101_v 84 81 540 24\n"
     "A21_A2104_c 0 116 80 20\n"
     "A21_A2104_v 84 114 220 24\n"
     "A21_A2112_c 320 116 80 20\n"
     "A21_A2112_v 404 114 220 24\n"
     "A21_A2113_c 0 149 80 20\n"
     "A21_A2113_v 84 147 58 24\n"
     "DGItems 0 187 624 405\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
    {"B01",
     "B01_B0101_c 0 50 80 20\n"
     "B01_B0101_v 84 48 540 24\n"
     "B01_B0102_c 0 81 624 20\n"
     "B01_B0102_v 0 105 624 487\n"
     "DGItems 0 418 624 174\n"
     "labOpt 640 4 184 20\n"
     "Title 0 0 624 28\n"
     "Line1 0 36 824 1\n"
     "Frm1 640 48 184 182\n"
     "labExplain 640 72 184 158\n"
     "Frm2 640 246 184 346\n"
     "LabInterFace 640 270 184 322\n"
    },
};
// clang-format on

std::shared_ptr<ctrlUser> MakePage(Visit& visit, const std::string& set) {
  return std::dynamic_pointer_cast<ctrlUser>(visit.desktop.Create("DossierKit.ctrlUser" + set, "page"));
}

TEST(PagePlaces, StandAsTheyWereLookedAt) {
  Visit visit;
  for (const Places& expected : kPlaces)
    EXPECT_EQ(PlacesOf(*MakePage(visit, expected.set)), expected.places) << expected.set;
}

TEST(PagePlaces, TheHeadingIsBoldAndTheHelpWraps) {
  Visit visit;
  for (const Places& expected : kPlaces) {
    const auto page = MakePage(visit, expected.set);
    const auto find = [&](const char* name) { return page->Controls().Find(name); };
    const toolkit::Font title = {"宋体", 14.25, true};
    const char* heading = std::string(expected.set) == "A01" ? "frmBasicInfo" : "Title";
    EXPECT_EQ(find(heading)->GetFont(), title) << expected.set;
    EXPECT_EQ(find("labOpt")->GetFont(), (toolkit::Font{"宋体", 9, true})) << expected.set;
    for (const char* help : {"labExplain", "LabInterFace"})
      EXPECT_TRUE(std::dynamic_pointer_cast<toolkit::Label>(find(help))->WordWrap()) << expected.set << help;
    for (const char* frame : {"Frm1", "Frm2"})
      EXPECT_FALSE(std::dynamic_pointer_cast<toolkit::Frame>(find(frame))->Border()) << expected.set << frame;
  }
}

TEST(PagePlaces, EveryFieldBearsTheNameOfItsLabel) {
  Visit visit;
  for (const Places& expected : kPlaces) {
    const auto page = MakePage(visit, expected.set);
    for (const auto& control : page->Controls()) {
      if (!IsValueControl(*control)) continue;
      const auto own =
          std::dynamic_pointer_cast<toolkit::Label>(page->Controls().Find(KeyOf(*control) + "_c"));
      EXPECT_NE(control->AccessibleName(), "") << control->Name();
      if (own) {
        EXPECT_EQ(control->AccessibleName(), own->Caption());
      }
    }
  }
  EXPECT_EQ(MakePage(visit, "A03")->Controls().Find("A03_A0304_v")->AccessibleName(), "职称");
  EXPECT_EQ(MakePage(visit, "A10")->Controls().Find("A10_A1007_v")->AccessibleName(), "情况说明");
}

TEST(PagePlaces, ABoxGivesItsRoomToAListThatShows) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("B01");
    EXPECT_FALSE(visit.user.Find("DGItems")->Visible());
    EXPECT_EQ(visit.user.Find("B01_B0102_v")->Place(), (toolkit::Rect{0, 1575, 9360, 7305}));
  });
  visit.database->RunScript("alter table B01 add column B0199 integer; update B01 set B0199=1");
  visit.database->RunScript("update s_infotable set Property=0 where tblname='B01'");
  visit.database->RunScript(
      "insert into s_infoitem(tblname,itemname,itemdesc,fieldtype,fldwidth,fldorder) "
      "values('B01','B0199','序号','int',0,99)");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("B01");
    EXPECT_TRUE(visit.user.Find("DGItems")->Visible());
    EXPECT_EQ(visit.user.Find("DGItems")->Place(), (toolkit::Rect{0, 6270, 9360, 2610}));
    EXPECT_EQ(visit.user.Find("B01_B0101_v")->Place(), (toolkit::Rect{1260, 720, 8100, 360}));
    EXPECT_EQ(visit.user.Find("B01_B0102_v")->Place(), (toolkit::Rect{0, 1575, 9360, 4455}));
  });
  EXPECT_TRUE(visit.Messages().empty());
}

}  // namespace
}  // namespace dossierkit::tests
