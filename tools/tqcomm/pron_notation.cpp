#include "pron_notation.h"

#include <cstring>
#include <vector>

namespace tqcomm {
namespace {

struct Symbol {
  char32_t ipa;
  const char* ascii;  // "" drops the symbol
};

// The notation's own letters (the first kOwnLetters), then the folds.
const size_t kOwnLetters = 17;
const Symbol kSymbols[] = {
    {U'ɪ', "I"}, {U'ʊ', "U"}, {U'ə', "E"}, {U'ʌ', "Q"}, {U'æ', "A"}, {U'ɔ', "O"}, {U'ɜ', "R"},
    {U'ɒ', "C"}, {U'ɑ', "a"}, {U'ː', ":"}, {U'ˈ', "'"}, {U'ˌ', ","}, {U'ʃ', "S"}, {U'ʒ', "Z"},
    {U'θ', "T"}, {U'ð', "D"}, {U'ŋ', "N"},
    // vowels without a letter of their own
    {U'ɛ', "e"}, {U'ɐ', "E"}, {U'ᵻ', "I"}, {U'ɚ', "Er"}, {U'ɝ', "R:"}, {U'ɨ', "I"}, {U'ʉ', "u"},
    {U'ɵ', "E"}, {U'ɘ', "E"}, {U'ɤ', "E"}, {U'ɯ', "u"}, {U'ø', "E"}, {U'œ', "E"}, {U'ɞ', "R"},
    // consonants
    {U'ɹ', "r"}, {U'ɻ', "r"}, {U'ʁ', "r"}, {U'ʀ', "r"}, {U'ɾ', "t"}, {U'ɡ', "g"}, {U'ɣ', "g"},
    {U'ɫ', "l"}, {U'ɬ', "l"}, {U'ʎ', "lj"}, {U'ɲ', "nj"}, {U'β', "b"}, {U'ɦ', "h"}, {U'ç', "h"},
    {U'χ', "h"}, {U'ɕ', "S"}, {U'ʂ', "S"}, {U'ʑ', "Z"}, {U'ʐ', "Z"},
    // marks without a sound of their own
    {U'ʔ', ""}, {U'ˑ', ""}, {0x0329, ""}, {0x0361, ""}, {0x035C, ""}, {U'ʲ', ""}, {0x0303, ""},
};

// Reads one UTF-8 character at s[*i]; a broken sequence reads as one byte.
char32_t NextChar(const std::string& s, size_t* i) {
  unsigned char c = static_cast<unsigned char>(s[*i]);
  size_t extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
  char32_t cp = extra == 3 ? c & 0x07 : extra == 2 ? c & 0x0F : extra == 1 ? c & 0x1F : c;
  if (*i + extra >= s.size() && extra > 0) {
    ++*i;
    return 0xFFFD;
  }
  for (size_t k = 1; k <= extra; ++k) {
    unsigned char t = static_cast<unsigned char>(s[*i + k]);
    if ((t & 0xC0) != 0x80) {
      ++*i;
      return 0xFFFD;
    }
    cp = cp << 6 | (t & 0x3F);
  }
  *i += extra + 1;
  return cp;
}

void AppendUtf8(std::string* out, char32_t cp) {
  if (cp < 0x80) {
    out->push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out->push_back(static_cast<char>(0xC0 | cp >> 6));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xE0 | cp >> 12));
    out->push_back(static_cast<char>(0x80 | (cp >> 6 & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

bool IsVowelLetter(char c) { return c != '\0' && std::strchr("IUEQAORCaeiou", c) != nullptr; }

// One sound of the notation: a vowel with its length mark, a consonant
// (tS and dZ are one), a stress mark or a blank.
struct Token {
  std::string text;
  enum Kind { kVowel, kConsonant, kStress, kBreak } kind;
};

std::vector<Token> Tokenize(const std::string& notation) {
  std::vector<Token> tokens;
  for (size_t i = 0; i < notation.size(); ++i) {
    char c = notation[i];
    if (c == '\'' || c == ',') {
      tokens.push_back({std::string(1, c), Token::kStress});
    } else if (c == ':') {
      if (!tokens.empty() && tokens.back().kind == Token::kVowel) tokens.back().text += c;
    } else if (IsVowelLetter(c)) {
      tokens.push_back({std::string(1, c), Token::kVowel});
    } else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
      if ((c == 'S' || c == 'Z') && !tokens.empty() && tokens.back().text == (c == 'S' ? "t" : "d")) {
        tokens.back().text += c;
      } else {
        tokens.push_back({std::string(1, c), Token::kConsonant});
      }
    } else {
      tokens.push_back({std::string(1, c), Token::kBreak});
    }
  }
  return tokens;
}

// Consonant clusters that may open an English syllable.
bool IsOnset(const std::vector<Token>& t, size_t from, size_t to) {
  static const char* const kClusters[] = {
      "pr", "br", "tr", "dr", "kr", "gr", "fr", "Tr", "Sr", "pl", "bl", "kl", "gl", "fl", "sl", "tw", "dw", "kw",
      "gw", "sw", "Tw", "sp", "st", "sk", "sm", "sn", "sf", "pj", "bj", "tj", "dj", "kj", "gj", "fj", "vj", "mj",
      "nj", "hj", "lj", "sj", "spr", "str", "skr", "spl", "skw", "spj", "stj", "skj"};
  if (to - from == 1) return true;
  std::string cluster;
  for (size_t i = from; i < to; ++i) cluster += t[i].text;
  for (const char* c : kClusters) {
    if (cluster == c) return true;
  }
  return false;
}

int CountNuclei(const std::vector<Token>& t, size_t from) {
  int n = 0;
  for (size_t i = from; i < t.size(); ++i) {
    if (t[i].kind == Token::kVowel && (i == from || t[i - 1].kind != Token::kVowel)) ++n;
  }
  return n;
}

}  // namespace

std::string IpaToNotation(const std::string& ipa) {
  std::string plain;
  for (size_t i = 0; i < ipa.size();) {
    char32_t cp = NextChar(ipa, &i);
    if (cp < 0x80) {
      // espeak-ng writes the vowel of "cat" as a plain a; a stays ɑ only in
      // the diphthongs of "price" and "mouth" and when long.
      if (cp == 'a') {
        size_t j = i;
        char32_t next = j < ipa.size() ? NextChar(ipa, &j) : 0;
        plain += next == U'ɪ' || next == U'ʊ' || next == U'ː' || next == 'i' || next == 'u' ? "a" : "A";
      } else if ((cp >= 'a' && cp <= 'z') || cp == ' ' || cp == '-') {
        plain.push_back(static_cast<char>(cp));
      }
      continue;
    }
    for (const Symbol& s : kSymbols) {
      if (s.ipa == cp) {
        plain += s.ascii;
        break;
      }
    }
  }
  // Stress marks move from the vowel to the front of the syllable: over the
  // consonants that may open it together, to the front of a word.
  std::vector<Token> t = Tokenize(plain);
  for (size_t s = 0; s < t.size(); ++s) {
    if (t[s].kind != Token::kStress) continue;
    size_t first = s;
    while (first > 0 && t[first - 1].kind == Token::kConsonant) --first;
    size_t to = first;
    if (first > 0 && t[first - 1].kind != Token::kBreak) {
      to = s;
      while (to > first && IsOnset(t, to - 1, s) && s - (to - 1) <= 3) --to;
    }
    Token mark = t[s];
    t.erase(t.begin() + static_cast<std::ptrdiff_t>(s));
    t.insert(t.begin() + static_cast<std::ptrdiff_t>(to), mark);
  }
  bool one_syllable = CountNuclei(t, 0) <= 1;
  std::string out;
  for (const Token& k : t) {
    if (!(one_syllable && k.kind == Token::kStress)) out += k.text;
  }
  return out;
}

std::string NotationToIpa(const std::string& notation) {
  std::string out;
  for (size_t i = 0; i < notation.size(); ++i) {
    char c = notation[i];
    // The a of the diphthongs in "price" and "mouth" is printed a.
    if (c == 'a' && i + 1 < notation.size() && (notation[i + 1] == 'I' || notation[i + 1] == 'U')) {
      out.push_back(c);
      continue;
    }
    bool mapped = false;
    for (size_t k = 0; k < kOwnLetters; ++k) {
      if (kSymbols[k].ascii[0] == c) {
        AppendUtf8(&out, kSymbols[k].ipa);
        mapped = true;
        break;
      }
    }
    if (!mapped) out.push_back(c);
  }
  return out;
}

std::string NotationToIpaHtml(const std::string& notation) {
  std::string utf8 = NotationToIpa(notation), out;
  for (size_t i = 0; i < utf8.size();) {
    char32_t cp = NextChar(utf8, &i);
    if (cp == '<' || cp == '>' || cp == '&' || cp == '"' || cp >= 0x80) {
      out += "&#" + std::to_string(static_cast<unsigned long>(cp)) + ";";
    } else {
      out.push_back(static_cast<char>(cp));
    }
  }
  return out;
}

PronShape ShapeOf(const std::string& notation) {
  std::vector<Token> t = Tokenize(notation);
  PronShape shape;
  shape.syllables = CountNuclei(t, 0);
  size_t last_stress = t.size();
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].text == "'") last_stress = i;
  }
  shape.finalStressed = shape.syllables == 1 || (last_stress < t.size() && CountNuclei(t, last_stress) == 1);
  return shape;
}

}  // namespace tqcomm
