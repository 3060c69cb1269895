#include "adapters/win32/look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "adapters/win32/painting.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

using windows::Wide;

int CALLBACK Found(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) noexcept {
  *reinterpret_cast<bool*>(found) = true;
  return 0;
}

bool Installed(HDC context, const std::wstring& face) {
  LOGFONTW wanted = {};
  wanted.lfCharSet = DEFAULT_CHARSET;
  face.copy(static_cast<wchar_t*>(wanted.lfFaceName), LF_FACESIZE - 1);
  bool found = false;
  EnumFontFamiliesExW(context, &wanted, Found, reinterpret_cast<LPARAM>(&found), 0);
  return found;
}

// The names that a family goes by, then those that stand in for it.
constexpr std::array kSongFaces = {
    "宋体", "SimSun", "NSimSun", "Microsoft YaHei", "WenQuanYi Zen Hei", "Noto Sans CJK SC"};
constexpr std::array kHeiFaces = {"华文细黑", "STXihei",           "Microsoft YaHei",
                                  "SimHei",   "WenQuanYi Zen Hei", "Noto Sans CJK SC"};

constexpr Palette kProgram = {
    .surface = RGB(0xF2, 0xF4, 0xF7),
    .ink = RGB(0x1D, 0x26, 0x33),
    .faint_ink = RGB(0x8B, 0x95, 0xA3),
    .soft_ink = RGB(0x57, 0x63, 0x73),
    .base = RGB(0xFF, 0xFF, 0xFF),
    .other_base = RGB(0xF7, 0xF9, 0xFC),
    .faint_base = RGB(0xF7, 0xF8, 0xFA),
    .button = RGB(0xFA, 0xFB, 0xFC),
    .edge = RGB(0xA6, 0xB2, 0xC1),
    .line = RGB(0xC6, 0xCF, 0xDA),
    .cell_line = RGB(0xD6, 0xE0, 0xEB),
    .accent = RGB(0x2B, 0x6C, 0xB0),
    .bar = RGB(0xE6, 0xEB, 0xF1),
    .hover = RGB(0xE3, 0xED, 0xF8),
    .selection = RGB(0xD3, 0xE4, 0xF7),
    .selected_text = RGB(0x20, 0x50, 0x82),
    .highlight = RGB(0x2B, 0x6C, 0xB0),
    .highlighted_text = RGB(0xFF, 0xFF, 0xFF),
    .shadow = RGB(0x6F, 0x79, 0x87),
    .workspace = RGB(0x4A, 0x63, 0x80),
    .workspace_text = RGB(0xFF, 0xFF, 0xFF),
    .heading = RGB(0x24, 0x5A, 0x93),
    .warning = RGB(0xD9, 0x8A, 0x12),
};

}  // namespace

const Palette& Palette::OfTheProgram() { return kProgram; }

Palette Palette::OfTheSystem() {
  const COLORREF window = GetSysColor(COLOR_WINDOW);
  const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  const COLORREF on_face = GetSysColor(COLOR_BTNTEXT);
  const COLORREF chosen = GetSysColor(COLOR_HIGHLIGHT);
  const COLORREF on_chosen = GetSysColor(COLOR_HIGHLIGHTTEXT);
  return {
      .surface = face,
      .ink = on_face,
      .faint_ink = GetSysColor(COLOR_GRAYTEXT),
      .soft_ink = on_face,
      .base = window,
      .other_base = window,
      .faint_base = window,
      .button = face,
      .edge = text,
      .line = text,
      .cell_line = text,
      .accent = chosen,
      .bar = face,
      .hover = face,
      .selection = chosen,
      .selected_text = on_chosen,
      .highlight = chosen,
      .highlighted_text = on_chosen,
      .shadow = GetSysColor(COLOR_BTNSHADOW),
      .workspace = face,
      .workspace_text = on_face,
      .heading = on_face,
      .warning = chosen,
  };
}

bool HighContrast() {
  HIGHCONTRASTW asked = {};
  asked.cbSize = sizeof asked;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof asked, &asked, 0) &&
         (asked.dwFlags & HCF_HIGHCONTRASTON);
}

COLORREF ReadableInk(COLORREF ground, COLORREF wanted) {
  // How bright an eye finds it, from 0 to 1.
  const auto light = [](COLORREF color) {
    const auto part = [](BYTE value) { return std::pow(value / 255.0, 2.2); };
    return 0.2126 * part(GetRValue(color)) + 0.7152 * part(GetGValue(color)) +
           0.0722 * part(GetBValue(color));
  };
  const auto stands_out = [&](COLORREF ink) {
    const auto [darker, lighter] = std::minmax({light(ground), light(ink)});
    return (lighter + 0.05) / (darker + 0.05);
  };
  constexpr COLORREF kBlack = RGB(0, 0, 0);
  constexpr COLORREF kWhite = RGB(0xFF, 0xFF, 0xFF);
  if (stands_out(wanted) >= 4.5) return wanted;
  return stands_out(kBlack) > stands_out(kWhite) ? kBlack : kWhite;
}

RECT Metrics::Pixels(const toolkit::Rect& place) const {
  const toolkit::Rect pixels = scale_.Pixels(place);
  return {pixels.left, pixels.top, pixels.left + pixels.width, pixels.top + pixels.height};
}

int Metrics::Edge() const { return std::max(1, static_cast<int>(scale_.Factor())); }

Backing::~Backing() {
  if (bitmap_) SelectObject(context_, before_);
  if (bitmap_) DeleteObject(bitmap_);
  DeleteDC(context_);
}

HDC Backing::Of(HDC device, int width, int height) {
  if (bitmap_ && width <= size_.cx && height <= size_.cy) return context_;
  size_ = {std::max<LONG>(size_.cx, std::max(width, 1)), std::max<LONG>(size_.cy, std::max(height, 1))};
  const HBITMAP grown = CreateCompatibleBitmap(device, size_.cx, size_.cy);
  const HGDIOBJ replaced = SelectObject(context_, grown);
  if (bitmap_) {
    DeleteObject(bitmap_);
  } else {
    before_ = replaced;
  }
  bitmap_ = grown;
  return context_;
}

Look::Look(int dpi, bool contrast)
    : metrics_(dpi),
      contrast_(contrast),
      palette_(contrast ? Palette::OfTheSystem() : Palette::OfTheProgram()),
      measuring_(CreateCompatibleDC(nullptr)) {}

Look::~Look() {
  DeleteDC(measuring_);
  for (const auto& [name, font] : fonts_) DeleteObject(font);
}

const Look& Looks::Of(int dpi) {
  const bool contrast = HighContrast();
  auto& look = looks_[{dpi, contrast}];
  if (!look) look = std::make_unique<const Look>(dpi, contrast);
  return *look;
}

COLORREF Look::ColorOf(toolkit::Color color) const {
  switch (color) {
    case toolkit::kWindowBackground: return palette_.base;
    case toolkit::kWindowText:
    case toolkit::kButtonText: return palette_.ink;
    case toolkit::kAppWorkspace: return palette_.workspace;
    case toolkit::kButtonShadow: return palette_.shadow;
    default: return color & 0x80000000U ? palette_.surface : color;
  }
}

const std::wstring& Look::FaceOf(const std::string& name) const {
  const auto known = faces_.find(name);
  if (known != faces_.end()) return known->second;
  // Where none is there, Windows looks for one that has the characters.
  std::wstring face = Wide(name);
  const auto& candidates = name == kHeiFaces[0] ? kHeiFaces : kSongFaces;
  if (!Installed(measuring_, face)) {
    for (const char* candidate : candidates) {
      if (!Installed(measuring_, Wide(candidate))) continue;
      face = Wide(candidate);
      break;
    }
  }
  return faces_.emplace(name, std::move(face)).first->second;
}

HFONT Look::FontOf(const toolkit::Font& font) const {
  const int height = std::max(1, metrics_.Pixels(font.size * 20));  // 20 twips to the point
  const std::string key = font.name + (font.bold ? " bold " : " ") + std::to_string(height);
  const auto known = fonts_.find(key);
  if (known != fonts_.end()) return known->second;
  LOGFONTW wanted = {};
  wanted.lfHeight = -height;
  wanted.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  wanted.lfCharSet = GB2312_CHARSET;
  wanted.lfQuality = CLEARTYPE_QUALITY;
  FaceOf(font.name).copy(static_cast<wchar_t*>(wanted.lfFaceName), LF_FACESIZE - 1);
  const HFONT made = CreateFontIndirectW(&wanted);
  if (!made) throw std::runtime_error("no font");
  return fonts_.emplace(key, made).first->second;
}

int Look::LineHeight(HFONT font) const {
  const auto known = line_heights_.find(font);
  if (known != line_heights_.end()) return known->second;
  const Selected selected(measuring_, font);
  TEXTMETRICW metrics = {};
  GetTextMetricsW(measuring_, &metrics);
  return line_heights_.emplace(font, static_cast<int>(metrics.tmHeight)).first->second;
}

int Look::TextWidth(HFONT font, const std::wstring& text) const {
  const Selected selected(measuring_, font);
  SIZE size = {};
  GetTextExtentPoint32W(measuring_, text.data(), static_cast<int>(text.size()), &size);
  return size.cx;
}

}  // namespace dossierkit::win32
