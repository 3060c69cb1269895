// High contrast: the colours that the program chose meet those of the system, and stay readable on them.
#include <algorithm>

#include "adapters/win32/window_view.h"
#include "tests/win32/native_test.h"
#include "tests/win32/picture.h"

namespace dossierkit::views {
namespace {

constexpr toolkit::Color kWhite = 0xFFFFFF;
constexpr toolkit::Color kNavy = 0x800000;  // blue in the highest byte

class NativeContrast : public NativeTest {
 protected:
  // The window is shown as for a user who asked for high contrast, or who did not.
  void Wear(const std::string& window, const win32::Look& look) {
    static_cast<win32::WindowView&>(Mouse().ViewOf(window)).Rescale(look);
  }
  // The ink of a text box, as its native window asks for it.
  COLORREF InkOf(const std::string& name) {
    const HWND box = Native(name);
    const HDC device = GetDC(box);
    SendMessageW(GetParent(box), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(device),
                 reinterpret_cast<LPARAM>(box));
    const COLORREF ink = GetTextColor(device);
    ReleaseDC(box, device);
    return ink;
  }
  COLORREF InkOfNode(int node) {
    const HWND tree = Native("tree");
    NMTVCUSTOMDRAW drawing = {};
    drawing.nmcd.hdr.hwndFrom = tree;
    drawing.nmcd.hdr.code = static_cast<UINT>(NM_CUSTOMDRAW);
    drawing.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    drawing.nmcd.lItemlParam = node;
    SendMessageW(GetParent(tree), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drawing));
    return drawing.clrText;
  }
  // How many pixels of a window have a colour.
  static std::ptrdiff_t Count(HWND window, COLORREF color) {
    const tests::Picture picture = tests::PictureOf(window);
    const auto pixel =
        static_cast<std::uint32_t>(GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color));
    return std::count(picture.pixels.begin(), picture.pixels.end(), pixel);
  }

  const win32::Look plain{96, false};
  const win32::Look contrast{96, true};
};

TEST_F(NativeContrast, ATextBoxHasAnInkThatStandsOutFromItsGround) {
  Visit([&] {
    const auto box = form->Get<toolkit::TextBox>("txtName");
    box->SetBackColor(kWhite);
    box->SetForeColor(kWhite);
    Wear("frmSample", plain);
    EXPECT_EQ(InkOf("txtName"), RGB(0xFF, 0xFF, 0xFF)) << "the program chose it";
    Wear("frmSample", contrast);
    EXPECT_EQ(InkOf("txtName"), RGB(0, 0, 0));
    box->SetForeColor(kNavy);
    EXPECT_EQ(InkOf("txtName"), RGB(0, 0, 0x80)) << "it can be read";
    box->SetBackColor(0);
    EXPECT_EQ(InkOf("txtName"), RGB(0xFF, 0xFF, 0xFF));
  });
}

TEST_F(NativeContrast, ALabelHasAnInkThatStandsOutFromItsGround) {
  Visit([&] {
    const auto label = form->Get<toolkit::Label>("labName");
    label->SetCaption("一一一");
    label->SetFont({"宋体", 36, true});
    label->Move({120, 4300, 3000, 900});
    label->SetOpaque(true);
    label->SetBackColor(kWhite);
    label->SetForeColor(kWhite);
    Wear("frmSample", plain);
    EXPECT_EQ(Count(Native("labName"), RGB(0, 0, 0)), 0) << "the program chose it";
    Wear("frmSample", contrast);
    EXPECT_GT(Count(Native("labName"), RGB(0, 0, 0)), 20);
    label->SetBackColor(0);
    EXPECT_GT(Count(Native("labName"), RGB(0xFF, 0xFF, 0xFF)), 20);
  });
}

TEST_F(NativeContrast, ANodeHasAnInkThatStandsOutFromItsTree) {
  Pick([&] {
    picker->FillTree();
    picker->tree->SetBackColor(kWhite);
    const int node = picker->tree->Nodes().Find("G1").Index();
    picker->tree->Nodes().Find("G1").SetForeColor(kWhite);
    Wear("frmPicker", plain);
    EXPECT_EQ(InkOfNode(node), RGB(0xFF, 0xFF, 0xFF)) << "the program chose it";
    Wear("frmPicker", contrast);
    EXPECT_EQ(InkOfNode(node), RGB(0, 0, 0));
  });
}

}  // namespace
}  // namespace dossierkit::views
