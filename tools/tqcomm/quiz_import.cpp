#include "quiz_import.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sstream>

namespace tqcomm {
namespace {

const char kBlank[] = "_______";  // a blank in a choice question's stem

std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(" \t\r\n");
  if (b == std::string::npos) return "";
  return s.substr(b, s.find_last_not_of(" \t\r\n") - b + 1);
}

// Runs of white space (line ends too) become one blank.
std::string Flat(const std::string& s) {
  std::string out;
  for (char c : s) {
    bool space = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (space && (out.empty() || out.back() == ' ')) continue;
    out += space ? ' ' : c;
  }
  return Trim(out);
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::stringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

std::string Note(int line, const std::string& what) { return std::to_string(line) + ": " + what; }

// ---- GIFT ----

// The first c at or after from that no backslash escapes.
size_t FindUnescaped(const std::string& s, const std::string& c, size_t from = 0) {
  for (size_t i = from; i < s.size(); ++i) {
    if (s[i] == '\\') {
      ++i;
    } else if (s.compare(i, c.size(), c) == 0) {
      return i;
    }
  }
  return std::string::npos;
}

std::string Unescape(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '\\' && i + 1 < s.size()) {
      ++i;
      out += s[i] == 'n' ? ' ' : s[i];
    } else {
      out += s[i];
    }
  }
  return out;
}

std::string StripTags(const std::string& s) {
  std::string out;
  bool in_tag = false;
  for (char c : s) {
    if (c == '<') in_tag = true;
    if (!in_tag) out += c;
    if (c == '>') in_tag = false;
  }
  for (auto [entity, c] : {std::pair<const char*, const char*>{"&nbsp;", " "}, {"&lt;", "<"}, {"&gt;", ">"},
                           {"&quot;", "\""}, {"&amp;", "&"}}) {
    for (size_t at; (at = out.find(entity)) != std::string::npos;) out.replace(at, std::string(entity).size(), c);
  }
  return out;
}

// Drops a leading "[html]", "[moodle]", "[plain]" or "[markdown]"; HTML
// loses its tags.
std::string PlainText(const std::string& raw) {
  std::string s = Trim(raw);
  for (const char* tag : {"[html]", "[moodle]", "[plain]", "[markdown]"}) {
    std::string t = tag;
    if (s.compare(0, t.size(), t) == 0) return Flat(t == "[html]" ? StripTags(s.substr(t.size())) : s.substr(t.size()));
  }
  return Flat(s);
}

struct GiftAnswer {
  bool right = false;
  bool wrong_mark = false;  // "~" without full weight
  std::string text, feedback;
};

// The answers between the braces: "=" or "~" starts each, "%n%" weighs it,
// "#" starts its feedback; "####" starts the general feedback.
std::vector<GiftAnswer> GiftAnswers(const std::string& block, std::string* general) {
  std::string body = block;
  size_t g = FindUnescaped(body, "####");
  if (g != std::string::npos) {
    *general = PlainText(Unescape(body.substr(g + 4)));
    body.resize(g);
  }
  std::vector<GiftAnswer> answers;
  size_t at = std::min(FindUnescaped(body, "="), FindUnescaped(body, "~"));
  while (at != std::string::npos) {
    size_t next = std::min(FindUnescaped(body, "=", at + 1), FindUnescaped(body, "~", at + 1));
    std::string piece = body.substr(at + 1, next == std::string::npos ? std::string::npos : next - at - 1);
    GiftAnswer a;
    int weight = body[at] == '=' ? 100 : 0;
    if (!piece.empty() && piece[0] == '%') {
      size_t end = piece.find('%', 1);
      if (end != std::string::npos) {
        weight = std::atoi(piece.substr(1, end - 1).c_str());
        piece.erase(0, end + 1);
      }
    }
    a.right = weight == 100;
    a.wrong_mark = !a.right;
    size_t fb = FindUnescaped(piece, "#");
    if (fb != std::string::npos) {
      a.feedback = PlainText(Unescape(piece.substr(fb + 1)));
      piece.resize(fb);
    }
    a.text = PlainText(Unescape(piece));
    answers.push_back(a);
    at = next;
  }
  return answers;
}

// One question of a GIFT file; false with *why set when it is passed over.
bool GiftQuestion(const std::string& text, ImportedQuestion* q, std::string* why) {
  std::string s = Trim(text);
  if (s.compare(0, 2, "::") == 0) {  // a title
    size_t end = s.find("::", 2);
    s = end == std::string::npos ? s : s.substr(end + 2);
  }
  size_t open = FindUnescaped(s, "{");
  if (open == std::string::npos) return *why = "no answers (a description)", false;
  size_t close = FindUnescaped(s, "}", open + 1);
  if (close == std::string::npos) return *why = "\"{\" without its \"}\"", false;
  std::string block = Trim(s.substr(open + 1, close - open - 1));
  std::string before = PlainText(Unescape(s.substr(0, open)));
  std::string after = PlainText(Unescape(s.substr(close + 1)));

  std::string general;
  std::vector<GiftAnswer> answers;
  if (block.empty()) return *why = "an essay question", false;
  if (block[0] == '#') return *why = "a numerical question", false;
  std::string tf = Trim(block.substr(0, FindUnescaped(block, "#")));
  if (tf == "T" || tf == "TRUE" || tf == "F" || tf == "FALSE") {
    q->options = {"True", "False"};
    q->answer = tf[0] == 'T' ? 0 : 1;
  } else {
    answers = GiftAnswers(block, &general);
    int right = 0, wrong = 0;
    for (const GiftAnswer& a : answers) {
      if (a.text.find("->") != std::string::npos) return *why = "a matching question", false;
      right += a.right ? 1 : 0;
      wrong += a.wrong_mark ? 1 : 0;
    }
    if (wrong == 0) return *why = "a short-answer question", false;
    if (right != 1) return *why = "not exactly one right answer", false;
    for (size_t i = 0; i < answers.size(); ++i) {
      q->options.push_back(answers[i].text);
      if (answers[i].right) {
        q->answer = static_cast<int>(i);
        q->comment = answers[i].feedback;
      }
    }
  }
  // A missing-word question: the blank goes where the answers stood.
  if (after.empty()) {
    q->stem = before;
  } else {
    bool tight = std::ispunct(static_cast<unsigned char>(after[0])) != 0;
    q->stem = (before.empty() ? "" : before + " ") + kBlank + (tight ? "" : " ") + after;
  }
  if (!general.empty()) q->comment += (q->comment.empty() ? "" : " ") + general;
  return true;
}

}  // namespace

ImportResult ParseGift(const std::string& utf8) {
  ImportResult result;
  std::vector<std::string> lines = Lines(utf8);
  std::string text;
  int start = 0;
  auto flush = [&] {
    if (Trim(text).empty()) return text.clear();
    ImportedQuestion q;
    q.line = start;
    std::string why;
    if (GiftQuestion(text, &q, &why)) {
      result.questions.push_back(q);
    } else {
      result.notes.push_back(Note(start, "passed over: " + why));
    }
    text.clear();
  };
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string t = Trim(lines[i]);
    if (i == 0 && t.compare(0, 3, "\xEF\xBB\xBF") == 0) t = Trim(t.substr(3));  // a byte order mark
    if (t.empty()) {
      flush();
      continue;
    }
    if (t.compare(0, 2, "//") == 0 || t.compare(0, 10, "$CATEGORY:") == 0) continue;
    if (text.empty()) start = static_cast<int>(i) + 1;
    text += t + "\n";
  }
  flush();
  return result;
}

bool LooksLikeAiken(const std::string& utf8) {
  for (const std::string& line : Lines(utf8)) {
    if (line.compare(0, 7, "ANSWER:") == 0) return true;
  }
  return false;
}

ImportResult ParseAiken(const std::string& utf8) {
  ImportResult result;
  ImportedQuestion q;
  std::string letters;  // the option letters in order
  int n = 0;
  for (const std::string& raw : Lines(utf8)) {
    ++n;
    std::string line = Trim(raw);
    if (n == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line = Trim(line.substr(3));
    if (line.empty()) continue;
    bool option = line.size() >= 3 && line[0] >= 'A' && line[0] <= 'Z' && (line[1] == '.' || line[1] == ')') &&
                  line[2] == ' ' && !q.stem.empty();
    if (line.compare(0, 7, "ANSWER:") == 0) {
      size_t right = letters.find(Trim(line.substr(7)).substr(0, 1));
      if (q.stem.empty() || letters.empty() || right == std::string::npos) {
        result.notes.push_back(Note(q.line ? q.line : n, "passed over: an answer that names no option"));
      } else {
        q.answer = static_cast<int>(right);
        result.questions.push_back(q);
      }
      q = ImportedQuestion();
      letters.clear();
    } else if (option) {
      letters += line[0];
      q.options.push_back(Flat(line.substr(3)));
    } else if (q.options.empty()) {
      if (q.stem.empty()) q.line = n;
      q.stem = Flat(q.stem + " " + line);
    } else {
      result.notes.push_back(Note(n, "passed over: a line among the options"));
    }
  }
  if (!q.stem.empty()) result.notes.push_back(Note(q.line, "passed over: no ANSWER line"));
  return result;
}

std::string BankText(const std::vector<ImportedQuestion>& questions, const std::string& source,
                     bool (*from_utf8)(const std::string&, std::string*), std::vector<std::string>* notes,
                     int* written) {
  std::string out = "// " + source + "\r\n\r\n";
  *written = 0;
  for (const ImportedQuestion& q : questions) {
    std::string stem, why;
    std::vector<std::string> options(q.options.size());
    bool exact = from_utf8(q.stem, &stem);
    for (size_t i = 0; i < options.size(); ++i) exact = from_utf8(q.options[i], &options[i]) && exact;
    // A stem whose first byte would be taken for part of the number gets a
    // full-width blank in front, which the page shows as a blank.
    const std::string dropped = "123456789 .\t$";
    if (!stem.empty() && dropped.find(stem[0]) != std::string::npos) stem = "\xA1\xA1" + stem;
    if (stem.empty()) why = "an empty question";
    if (stem.size() > 255) why = "a question longer than 255 bytes";
    if (options.size() < 2 || options.size() > 5) why = std::to_string(options.size()) + " options (2 to 5 fit)";
    for (const std::string& o : options) {
      if (o.size() > 95) why = "an option longer than 95 bytes";
    }
    if (!why.empty()) {
      notes->push_back(Note(q.line, "left out: " + why));
      continue;
    }
    if (!exact) notes->push_back(Note(q.line, "characters without a GBK form became \"?\""));
    out += "$ " + stem + "\r\n";
    for (size_t i = 0; i < options.size(); ++i) out += std::string(1, static_cast<char>('A' + i)) + ") " + options[i] + "\r\n";
    out += std::string("#") + static_cast<char>('A' + q.answer) + "\r\n";
    std::string comment;
    if (!q.comment.empty() && from_utf8(q.comment, &comment)) out += "// " + comment + "\r\n";
    out += "\r\n";
    ++*written;
  }
  return out;
}

}  // namespace tqcomm
