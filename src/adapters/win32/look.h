// Look: sizes, colours and fonts of the views, as those in Qt have them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "adapters/windows/windows_headers.h"
#include "platform/toolkit/loop/scale.h"

namespace dossierkit::win32 {

// Everything that is painted, and nothing else, has its colour from here. Where the user asked Windows for
// high contrast, the colours are those of the system.
struct Palette {
  COLORREF surface;     // of windows
  COLORREF ink;         // of texts
  COLORREF faint_ink;   // of what is disabled
  COLORREF soft_ink;    // of captions that need not stand out
  COLORREF base;        // of boxes and lists
  COLORREF other_base;  // of every second row
  COLORREF faint_base;  // of a disabled box
  COLORREF button;
  COLORREF edge;       // around every box: fields, lists, buttons, pictures, frames
  COLORREF line;       // between things: under bars, of a disabled box
  COLORREF cell_line;  // between cells
  COLORREF accent;     // headings, the box that has the keyboard
  COLORREF bar;        // tool bar, heads of lists
  COLORREF hover;
  COLORREF selection;      // the chosen item of a list without the keyboard, and of the menu
  COLORREF selected_text;  // on it
  COLORREF highlight;      // the chosen item of the list that has the keyboard, marked text
  COLORREF highlighted_text;
  COLORREF shadow;
  COLORREF workspace;  // heads of menus
  COLORREF workspace_text;
  COLORREF heading;  // captions of frames
  COLORREF warning;  // the disc of an exclamation

  static Palette OfTheSystem();
  static const Palette& OfTheProgram();
};

// Whether the user asked Windows for high contrast.
bool HighContrast();

// An ink that can be read on a ground: the wanted one where it stands out from it by 4.5 to 1, else black or
// white.
COLORREF ReadableInk(COLORREF ground, COLORREF wanted);

inline constexpr double kBarWidth = 3;  // at the left of a chosen item, in pixels at 96 dpi

// Turns twips into pixels of a screen of so many dots to the inch.
class Metrics {
 public:
  explicit Metrics(int dpi) : dpi_(dpi), scale_(dpi / 96.0) {}
  int Dpi() const { return dpi_; }
  const toolkit::Scale& GetScale() const { return scale_; }
  int Pixels(double twips) const { return scale_.Pixels(twips); }
  int Twips(double pixels) const { return scale_.Twips(pixels); }
  RECT Pixels(const toolkit::Rect& place) const;
  // `pixels` of a design at 96 dpi.
  int Scaled(double pixels) const { return Pixels(pixels * toolkit::kTwipsPerPixel); }
  // How wide the edge of a box is, how wide that of the one that has the keyboard, how round both are.
  int Edge() const;
  int Ring() const { return Scaled(2); }
  int Radius() const { return Scaled(3); }

 private:
  int dpi_;
  toolkit::Scale scale_;
};

// A bitmap in memory that windows are drawn into, one after the other: it grows with the largest.
class Backing {
 public:
  Backing() : context_(CreateCompatibleDC(nullptr)) {}
  ~Backing();
  Backing(const Backing&) = delete;
  Backing& operator=(const Backing&) = delete;

  // A context of at least that size, for what `device` shows; with what was drawn there last.
  HDC Of(HDC device, int width, int height);

 private:
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  SIZE size_ = {};
};

// What all windows of one resolution share. Its fonts live as long as it does.
class Look {
 public:
  explicit Look(int dpi, bool contrast = HighContrast());
  ~Look();
  Look(const Look&) = delete;
  Look& operator=(const Look&) = delete;

  const Metrics& GetMetrics() const { return metrics_; }
  const Palette& Colors() const { return palette_; }
  // A colour of the model; a system colour is one of the palette's.
  COLORREF ColorOf(toolkit::Color color) const;
  // The colour of a text on a ground. With high contrast the program's own colours meet those of the system.
  COLORREF InkOn(COLORREF ground, COLORREF wanted) const {
    return contrast_ ? ReadableInk(ground, wanted) : wanted;
  }
  // A font of the model: its family with the Chinese characters of GB2312, or one that stands in for it.
  HFONT FontOf(const toolkit::Font& font) const;
  // Of texts that no control has.
  HFONT ProgramFont() const { return FontOf({}); }
  // The height of a line of text, and the width of a text in one line, in pixels.
  int LineHeight(HFONT font) const;
  int TextWidth(HFONT font, const std::wstring& text) const;
  // A context of the screen's to measure with; nothing is drawn there.
  HDC Measuring() const { return measuring_; }
  Backing& GetBacking() const { return backing_; }

 private:
  const std::wstring& FaceOf(const std::string& name) const;

  Metrics metrics_;
  bool contrast_;
  Palette palette_;
  mutable std::map<std::string, std::wstring> faces_;
  mutable std::map<std::string, HFONT> fonts_;
  mutable std::map<HFONT, int> line_heights_;
  HDC measuring_;
  mutable Backing backing_;
};

// The looks of all resolutions that windows have had, with high contrast and without. Each stays: its fonts
// may still be in use.
class Looks {
 public:
  const Look& Of(int dpi);

 private:
  std::map<std::pair<int, bool>, std::unique_ptr<const Look>> looks_;
};

}  // namespace dossierkit::win32
