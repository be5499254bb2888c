#include "platform/text_pango.h"

#include <iconv.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>
#include <mutex>
#include <set>

namespace tq::gdi::text {
namespace {

const char kDefaultFamily[] = "WenQuanYi Micro Hei";
const char kPronFamily[] = "DejaVu Sans";
// Cell height of the default font, as the system font of a Chinese desktop.
constexpr int kDefaultCellHeight = 16;

// The dictionaries' pronunciation notation: ASCII stand-ins for the phonetic
// symbols, drawn as the symbols by the face "pron".
const char* PronSymbol(unsigned char c) {
  switch (c) {
    case 'I': return "\u026A";
    case 'U': return "\u028A";
    case 'E': return "\u0259";
    case 'Q': return "\u028C";
    case 'A': return "\u00E6";
    case 'O': return "\u0254";
    case 'R': return "\u025C";
    case 'C': return "\u0252";
    case 'a': return "\u0251";
    case ':': return "\u02D0";
    case '\'': return "\u02C8";
    case ',': return "\u02CC";
    case 'S': return "\u0283";
    case 'Z': return "\u0292";
    case 'T': return "\u03B8";
    case 'D': return "\u00F0";
    case 'N': return "\u014B";
    default: return nullptr;
  }
}

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// Pango and fontconfig keep caches that are not theirs to share between
// threads, so every use goes through this one engine under its lock. The lock
// is held only while text is measured or drawn: nothing calls out of here.
class Engine {
 public:
  Engine() {
    map_ = pango_cairo_font_map_new();
    context_ = pango_font_map_create_context(map_);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    // Whole-pixel advances, so that a width is the same however the text is
    // cut into pieces that are measured.
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
    pango_cairo_context_set_font_options(context_, options);
    cairo_font_options_destroy(options);
    pango_context_set_language(context_, pango_language_from_string("zh-cn"));

    PangoFontFamily** families = nullptr;
    int count = 0;
    pango_font_map_list_families(map_, &families, &count);
    for (int i = 0; i < count; ++i) families_.insert(Lower(pango_font_family_get_name(families[i])));
    g_free(families);
    gbk_ = iconv_open("UTF-8", "GBK");
  }

  std::mutex& mutex() { return mutex_; }

  std::string Decode(const char* gbk, int length, bool pron) {
    std::string out;
    if (gbk == nullptr || length <= 0) return out;
    auto bytes = reinterpret_cast<const unsigned char*>(gbk);
    for (int i = 0; i < length;) {
      unsigned char c = bytes[i];
      if (c < 0x80) {
        const char* symbol = pron ? PronSymbol(c) : nullptr;
        if (symbol) {
          out += symbol;
        } else {
          out.push_back(static_cast<char>(c));
        }
        ++i;
        continue;
      }
      char pair[2] = {static_cast<char>(c), i + 1 < length ? static_cast<char>(bytes[i + 1]) : '\0'};
      char utf8[8];
      char* src = pair;
      size_t src_left = i + 1 < length ? 2 : 1;
      char* dst = utf8;
      size_t room = sizeof utf8;
      if (gbk_ != reinterpret_cast<iconv_t>(-1) && c >= 0x81 && c != 0xFF &&
          iconv(gbk_, &src, &src_left, &dst, &room) != static_cast<size_t>(-1) && src_left == 0) {
        out.append(utf8, static_cast<size_t>(dst - utf8));
        i += 2;
      } else {
        if (gbk_ != reinterpret_cast<iconv_t>(-1)) iconv(gbk_, nullptr, nullptr, nullptr, nullptr);
        out.push_back('?');  // a byte that starts no GBK character
        ++i;
      }
    }
    return out;
  }

  // A layout of the text in the font, ready to measure or draw. The caller
  // holds the lock and unrefs it.
  PangoLayout* Layout(const LogFont& font, const char* gbk, int length) {
    bool pron = IsPron(font);
    PangoFontDescription* desc = Describe(font, pron);
    PangoLayout* layout = pango_layout_new(context_);
    pango_layout_set_font_description(layout, desc);
    pango_font_description_free(desc);
    std::string utf8 = Decode(gbk, length, pron);
    pango_layout_set_text(layout, utf8.data(), static_cast<int>(utf8.size()));
    if (font.underline || font.strikeOut) {
      PangoAttrList* attrs = pango_attr_list_new();
      if (font.underline) pango_attr_list_insert(attrs, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
      if (font.strikeOut) pango_attr_list_insert(attrs, pango_attr_strikethrough_new(TRUE));
      pango_layout_set_attributes(layout, attrs);
      pango_attr_list_unref(attrs);
    }
    return layout;
  }

 private:
  static bool IsPron(const LogFont& font) {
    return Lower(std::string(font.faceName, strnlen(font.faceName, sizeof font.faceName))) == "pron";
  }

  // The family list for a face: the face itself when the machine has it, and
  // always the default face behind it for the characters it lacks.
  std::string Families(const LogFont& font, bool pron) {
    if (pron) return std::string(kPronFamily) + "," + kDefaultFamily;
    std::string face = Decode(font.faceName, static_cast<int>(strnlen(font.faceName, sizeof font.faceName)), false);
    if (!face.empty() && face.find(',') == std::string::npos && families_.count(Lower(face)) != 0) {
      return face + "," + kDefaultFamily;
    }
    return kDefaultFamily;
  }

  PangoFontDescription* Describe(const LogFont& font, bool pron) {
    std::string families = Families(font, pron);
    PangoFontDescription* desc = pango_font_description_new();
    pango_font_description_set_family(desc, families.c_str());
    int weight = font.weight <= 0 ? 400 : std::min(font.weight, 1000);
    pango_font_description_set_weight(desc, static_cast<PangoWeight>(std::max(weight, 100)));
    pango_font_description_set_style(desc, font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    // A positive height is the cell (ascent and descent), a negative one the
    // character (the em); 0 is the default cell.
    double pixels;
    if (font.height < 0) {
      pixels = std::min(-static_cast<double>(font.height), 2000.0);
    } else {
      double cell = font.height == 0 ? kDefaultCellHeight : std::min(font.height, 2000);
      pixels = cell / CellRatio(desc, families);
    }
    pango_font_description_set_absolute_size(desc, std::max(pixels, 1.0) * PANGO_SCALE);
    return desc;
  }

  // Cell height over em size of the family list's first face.
  double CellRatio(PangoFontDescription* desc, const std::string& families) {
    auto it = ratios_.find(families);
    if (it != ratios_.end()) return it->second;
    constexpr double kProbe = 1000;
    pango_font_description_set_absolute_size(desc, kProbe * PANGO_SCALE);
    PangoFontMetrics* metrics = pango_context_get_metrics(context_, desc, nullptr);
    double cell = static_cast<double>(pango_font_metrics_get_ascent(metrics) +
                                      pango_font_metrics_get_descent(metrics)) / PANGO_SCALE;
    pango_font_metrics_unref(metrics);
    double ratio = cell > 0 ? cell / kProbe : 1.0;
    ratios_[families] = ratio;
    return ratio;
  }

  std::mutex mutex_;
  PangoFontMap* map_ = nullptr;
  PangoContext* context_ = nullptr;
  std::set<std::string> families_;  // lower case
  std::map<std::string, double> ratios_;
  iconv_t gbk_;
};

Engine& TheEngine() {
  static Engine* engine = new Engine;  // lives until exit, as the font caches do
  return *engine;
}

void SetSource(cairo_t* cr, Colour c) {
  cairo_set_source_rgb(cr, (c & 0xFF) / 255.0, ((c >> 8) & 0xFF) / 255.0, ((c >> 16) & 0xFF) / 255.0);
}

}  // namespace

LogFont DefaultFont() {
  LogFont font;
  font.height = kDefaultCellHeight;
  font.weight = 400;
  font.charSet = 134;  // GB2312_CHARSET
  std::strcpy(font.faceName, "System");
  return font;
}

Size Measure(const LogFont& font, const char* gbk, int length) {
  Engine& engine = TheEngine();
  std::lock_guard<std::mutex> lock(engine.mutex());
  PangoLayout* layout = engine.Layout(font, gbk, length);
  PangoRectangle logical;
  pango_layout_get_pixel_extents(layout, nullptr, &logical);
  g_object_unref(layout);
  return {logical.width, logical.height};
}

void Draw(cairo_surface_t* surface, const LogFont& font, int x, int y, const char* gbk, int length,
          Colour colour, bool opaque, Colour background) {
  Engine& engine = TheEngine();
  std::lock_guard<std::mutex> lock(engine.mutex());
  PangoLayout* layout = engine.Layout(font, gbk, length);
  cairo_t* cr = cairo_create(surface);
  if (opaque) {
    PangoRectangle logical;
    pango_layout_get_pixel_extents(layout, nullptr, &logical);
    SetSource(cr, background);
    cairo_rectangle(cr, x, y, logical.width, logical.height);
    cairo_fill(cr);
  }
  SetSource(cr, colour);
  cairo_move_to(cr, x, y);
  pango_cairo_show_layout(cr, layout);
  cairo_destroy(cr);
  g_object_unref(layout);
}

std::string Decode(const char* gbk, int length, bool pron) {
  Engine& engine = TheEngine();
  std::lock_guard<std::mutex> lock(engine.mutex());
  return engine.Decode(gbk, length, pron);
}

}  // namespace tq::gdi::text
