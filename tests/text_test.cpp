// The text services, byte for byte: double-byte boundaries, trimming,
// wrapping, wildcards, line ends and the array helpers.
#include <algorithm>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "core/text.h"
#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::G;

namespace {

// Runs an in-place export on a copy with room to grow.
template <class F>
std::string InPlace(const std::string& in, F f) {
  std::vector<char> buf(in.size() * 2 + 16, '\0');
  std::memcpy(buf.data(), in.data(), in.size());
  f(buf.data());
  return std::string(buf.data());
}

TEST(Trim, EachTrimmerKeepsWhatItShould) {
  EXPECT_EQ(InPlace(" \t a b \r\n", Ltrim), "a b \r\n");
  EXPECT_EQ(InPlace("\r\n a", Ltrim), "\r\n a");
  EXPECT_EQ(InPlace("ab  \t ", Rtrim), "ab  \t");
  EXPECT_EQ(InPlace("   ", Rtrim), " ");
  EXPECT_EQ(InPlace("", Rtrim), "");
  EXPECT_EQ(InPlace(" \r\n \t", StrongRtrim), "");
  EXPECT_EQ(InPlace("x y \t\r\n", StrongRtrim), "x y");
  EXPECT_EQ(InPlace("  \tab \r\n", NoBlankAndReturnChar), "\tab");
  EXPECT_EQ(InPlace("   \r\n", NoBlankAndReturnChar), "\r");
}

TEST(Trim, CStrRtrimNeverSplitsACharacter) {
  std::string two = G("苹果");
  auto cut = [](const std::string& s, int n) { return InPlace(s, [n](char* p) { CStrRtrim(p, n); }); };
  EXPECT_EQ(cut(two, 3), G("苹"));
  EXPECT_EQ(cut(two, 2), G("苹"));
  EXPECT_EQ(cut(two, 4), two);
  EXPECT_EQ(cut("a" + two, 2), "a");  // byte 2 is the second half of 苹
  EXPECT_EQ(cut("a" + two, 3), "a" + G("苹"));
  EXPECT_EQ(cut("abcdef", 3), "abc");
}

TEST(LineEnds, AdjustCrLfRepairsInPlace) {
  auto adjust = [](std::string s) {
    int reached = AdjustCrLf(s.data());
    EXPECT_EQ(reached, static_cast<int>(s.size()));
    return s;
  };
  EXPECT_EQ(adjust("a\r\nb"), "a\r\nb");
  EXPECT_EQ(adjust("a\r\rb"), "a\r\nb");
  EXPECT_EQ(adjust("a\r b"), "a\r\nb");
  EXPECT_EQ(adjust("a \rb"), "a\r\nb");
  EXPECT_EQ(adjust("a\rb"), "a\rb");
  EXPECT_EQ(adjust("a\nb"), "a b");
  EXPECT_EQ(adjust("\r"), "\r");
}

TEST(Wrapping, BreakLineAtBlanksAndBetweenCharacters) {
  auto wrap = [](const std::string& s, int width, int* len) {
    return InPlace(s, [&](char* p) { *len = BreakLine(p, width); });
  };
  int len = 0;
  std::string word(30, 'w');
  EXPECT_EQ(wrap(word, 10, &len), word);  // never inside a word
  EXPECT_EQ(len, 30);
  EXPECT_EQ(wrap("aaaaaaaa bb cc", 10, &len), "aaaaaaaa\r\nbb cc");
  EXPECT_EQ(len, 15);
  // Blanks take no column: many short words stay on one line.
  EXPECT_EQ(wrap("a b c d e f g h i j", 10, &len), "a b c d e f g h\r\ni j");
  // Chinese breaks behind any character once the column reaches width - 2.
  std::string four = G("一二三四");
  EXPECT_EQ(wrap(four, 4, &len), G("一二") + "\r\n" + G("三四") + "\r\n");
  // ...but not in front of a CR.
  EXPECT_EQ(wrap(G("一二") + "\r\n", 4, &len), G("一二") + "\r\n");
  // The lowest widths break at every blank and behind every character.
  EXPECT_EQ(wrap("a b", INT32_MIN, &len), "a\r\nb");
  EXPECT_EQ(wrap("a b", INT32_MAX, &len), "a b");
  EXPECT_EQ(BreakLine(nullptr, 10), 0);
  char empty[1] = "";
  EXPECT_EQ(BreakLine(empty, 10), 0);
}

TEST(Tests, EnglishChineseExpressionFileName) {
  EXPECT_EQ(IsEnglishWord(""), 1);
  EXPECT_EQ(IsEnglishWord("look up"), 1);
  EXPECT_EQ(IsEnglishWord(("a" + G("的")).c_str()), 0);
  EXPECT_EQ(vcIsChinese(G("的").c_str()), 1);
  EXPECT_EQ(vcIsChinese("a"), 0);
  EXPECT_EQ(vcIsExpress("look up"), 1);
  EXPECT_EQ(vcIsExpress("look   "), 0);
  EXPECT_EQ(vcIsValidFileName("a b.wav"), 1);
  for (const char* bad : {"a\\b", "a/b", "c:", "a?", "a|b", "<", ">", "\"", "*"}) {
    EXPECT_EQ(vcIsValidFileName(bad), 0) << bad;
  }
}

TEST(Tests, WordInSentence) {
  int32_t pos = -1;
  EXPECT_EQ(vcIsWordInSentence("concatenate", "cat", &pos), 0);
  EXPECT_EQ(vcIsWordInSentence("the cat", "cat", &pos), 1);
  EXPECT_EQ(pos, 4);
  EXPECT_EQ(vcIsWordInSentence("The CAT sat", "Cat", &pos), 1);
  EXPECT_EQ(pos, 4);
  EXPECT_EQ(vcIsWordInSentence("cats and a cat.", "cat", &pos), 1);
  EXPECT_EQ(pos, 11);
  // After a refused occurrence the scan goes on behind it, and an occurrence
  // right at the scan position has only the byte behind it tested.
  EXPECT_EQ(vcIsWordInSentence("catcat", "cat", &pos), 1);
  EXPECT_EQ(pos, 3);
}

TEST(Conversions, SpeechTextFileNamesAndUrls) {
  char out[128];
  EXPECT_EQ(vcGetTtsChinesStr("abc,1(2).", out), 5);
  EXPECT_STREQ(out, ",1,2,");
  std::string mixed = "Hi " + G("你好") + "[x]; \"ok\"!'?";
  vcGetTtsChinesStr(mixed.c_str(), out);
  EXPECT_EQ(std::string(out), G("你好") + ",,;\"\"!'?");

  EXPECT_EQ(vcConvertSentenceToFileName("\x01Why? \"No\": a/b\x02", out), 14);
  EXPECT_STREQ(out, "Why@ ^No^# a&b");
  char url[] = "Why# ~No~";
  vcRestoreUrlSentence(url);
  EXPECT_STREQ(url, "Why? \"No\"");

  std::string tail = "apple  " + G("苹果");
  EXPECT_EQ(vcRemoveChineseTail(tail.c_str(), out), 5);
  EXPECT_STREQ(out, "apple");

  char text[] = "aXbXXc";
  vcStrEqualReplace(text, "X", "Y");
  EXPECT_STREQ(text, "aYbYYc");
  vcStrEqualReplace(text, "Y", "ZZ");  // lengths differ: nothing happens
  EXPECT_STREQ(text, "aYbYYc");
  char overlap[] = "aaaa";
  vcStrEqualReplace(overlap, "aa", "ba");
  EXPECT_STREQ(overlap, "baba");
}

TEST(Conversions, PathPieces) {
  char out[64] = "untouched";
  EXPECT_EQ(vcExtractFileNameFromPath("c:\\snd\\a.wav", out), 5);
  EXPECT_STREQ(out, "a.wav");
  std::strcpy(out, "untouched");
  EXPECT_EQ(vcExtractFileNameFromPath("\\a.wav", out), 0);
  EXPECT_EQ(vcExtractFileNameFromPath("a.wav", out), 0);
  EXPECT_STREQ(out, "untouched");

  char path[] = "c:\\dir.x\\name.tar.gz";
  EXPECT_EQ(vcGetFileExtName(path, out), 3);
  EXPECT_STREQ(out, ".gz");
  char nodot[] = "c:\\dir\\name";
  std::strcpy(out, "kept");
  EXPECT_EQ(vcGetFileExtName(nodot, out), 0);
  EXPECT_STREQ(nodot, "");
  EXPECT_STREQ(out, "kept");
}

TEST(Conversions, HalfWidthPunctuationKeepsLength) {
  std::string s = G("甲，乙。丙：丁；戊？己！") + "\xA1\xA1" + G("’");
  std::string out = InPlace(s, tq::HalfWidthPunctuation);
  EXPECT_EQ(out, G("甲") + ", " + G("乙") + ". " + G("丙") + ": " + G("丁") + "; " + G("戊") + "? " + G("己") +
                     "!   ' ");
}

TEST(Lengths, CharactersAndFoldedCompare) {
  EXPECT_EQ(vcMystrlen(("abc" + G("的")).c_str()), 4);
  EXPECT_EQ(vcMystrlen("abc\xB5"), 5);  // an odd count of high bytes adds one
  EXPECT_EQ(vcVbStrlen(G("中文").c_str()), 2);
  EXPECT_EQ(vcVBStringLen("ab"), 2);
  EXPECT_EQ(vcStrcmp("Apple", "aPPLE"), 0);
  EXPECT_LT(vcStrcmp("apple", "Banana"), 0);
  EXPECT_GT(vcStrcmp("b", "A"), 0);
  EXPECT_LT(vcStrcmp("ab", "abc"), 0);
  char s[16] = "MiXed1";
  vcStrupr(s);
  EXPECT_STREQ(s, "MIXED1");
  vcStrlwr(s);
  EXPECT_STREQ(s, "mixed1");
  EXPECT_EQ(vcStrcpy(s, "ab"), 2);
  EXPECT_EQ(vcStrcat(s, "cd"), 4);
  EXPECT_EQ(vcStrlen(s), 4);
  EXPECT_EQ(vcSetCharInString(s, 1, 'X'), 'X');
  EXPECT_STREQ(s, "aXcd");
}

TEST(MemoryText, LinesAndWords) {
  MemoryFileObj obj;
  char out[64];
  auto next = [&](auto read) {
    int n = read(&obj, out);
    return std::to_string(n) + (n > 0 ? " " + std::string(out) : "");
  };
  InitMemoryFileObj(&obj, "one\ntwo\r\nthree\n\nfour");  // "\n\n" is one line end
  for (const char* want : {"3 one", "3 two", "5 three", "4 four", "-1"}) EXPECT_EQ(next(MemoryFgets), want);
  InitMemoryFileObj(&obj, "");
  EXPECT_EQ(next(MemoryFgets), "-1");
  InitMemoryFileObj(&obj, "  it's 2 cats!");
  for (const char* want : {"2 it", "1 s", "4 cats", "0"}) EXPECT_EQ(next(MemoryGetWord), want);
}

TEST(Arrays, SortSearchUniqueShuffle) {
  int32_t a[] = {5, -3, 5, 0, 5, 9};
  vcSortIntArray(a, 6);
  EXPECT_EQ(std::vector<int32_t>(a, a + 6), std::vector<int32_t>({-3, 0, 5, 5, 5, 9}));
  EXPECT_EQ(vcBinarySearchIntArray(a, 6, 5), 2);
  EXPECT_EQ(vcBinarySearchIntArray(a, 6, 4), -1);
  EXPECT_EQ(vcBinarySearchIntArray(a, 0, 5), -1);

  uint32_t u[] = {3, 1, 3, 2, 1};
  vcSortUINT(u, 5);
  EXPECT_EQ(vcRemoveSameUINT(u, 5), 3);
  EXPECT_EQ(std::vector<uint32_t>(u, u + 3), std::vector<uint32_t>({1, 2, 3}));

  // Arrays shorter than three stay; a shuffle is a permutation; two calls
  // in one second agree.
  int32_t two[] = {1, 2};
  vcRandomIntArray(two, 2);
  EXPECT_EQ(two[0], 1);
  std::vector<int32_t> identity(50);
  std::iota(identity.begin(), identity.end(), 0);
  auto shuffled = [&identity] {
    std::vector<int32_t> v = identity;
    vcRandomIntArray(v.data(), 50);
    return v;
  };
  std::vector<int32_t> x = shuffled(), y = shuffled();
  if (x != y) x = shuffled(), y = shuffled();  // the clock ticked between the calls; once more
  EXPECT_EQ(x, y);
  std::sort(x.begin(), x.end());
  EXPECT_EQ(x, identity);

  MemoryBlock block{};
  unsigned char* p = static_cast<unsigned char*>(AllocMemory(&block, 64));
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(block.block, p);
  EXPECT_NE(block.heap, nullptr);
  for (int i = 0; i < 64; ++i) EXPECT_EQ(p[i], 0);
  FreeMemory(&block);
}

bool Wild(const char* word, const char* pattern) {
  std::string p = pattern;
  return tq::WildMatch(word, p.data());
}

TEST(Wildcards, SegmentsStarsAndTheTailTest) {
  const std::string a38(38, 'a'), a39(39, 'a'), stars30(30, '*');
  const struct {
    const char *word, *pattern;
    bool match;
  } cases[] = {
      {"ABC", "a?c", true},       {"abcbc", "*c", true},  // first "c" at 2, then the tail test
      {"ab", "ab", true},         {"abc", "ab", false},         {"xab", "ab*", false},    {"abxyz", "ab*", true},
      {"running", "r*n*g", true}, {"running", "r*x*g", false},  {"anything", "*", true},  {"banana", "b*na", true},
      {"abcbd", "*b?", false},    {"abd", "*b?", true},  // in the tail test "?" is a plain character
      // Lengths: words of 39 bytes and patterns of 30 never match.
      {a39.c_str(), "*", false},  {a38.c_str(), "*", true},     {"a", stars30.c_str(), false},
  };
  for (const auto& c : cases) EXPECT_EQ(Wild(c.word, c.pattern), c.match) << c.word << " ~ " << c.pattern;
  // The caller's pattern is lower-cased in place.
  char pattern[] = "A*C";
  EXPECT_TRUE(tq::WildMatch("abc", pattern));
  EXPECT_STREQ(pattern, "a*c");
  std::string seg;
  EXPECT_EQ(tq::NextPatternSegment("**ab*", 0, &seg), 2);
  EXPECT_EQ(seg, "ab");
  EXPECT_EQ(tq::NextPatternSegment("ab**", 2, &seg), -1);
  EXPECT_EQ(tq::NextPatternSegment("ab", 2, &seg), -2);
  EXPECT_EQ(tq::FindPatternSegment("abc", 0, "x"), -10000);
}

class LineReaderTest : public tqtest::TempDirTest {};

TEST_F(LineReaderTest, TrimsAndSplitsLongLines) {
  std::string long_line(1500, 'x');
  tqtest::WriteFile("t.txt", " \tone  \r\n\n" + long_line + "\nlast");
  std::FILE* f = std::fopen("t.txt", "rb");
  ASSERT_NE(f, nullptr);
  tq::LineReader reader(f);
  std::string line;
  EXPECT_EQ(reader.Next(&line), 3);
  EXPECT_EQ(line, "one");
  EXPECT_EQ(reader.Next(&line), 0);
  EXPECT_EQ(reader.Next(&line), 998);
  EXPECT_EQ(reader.Next(&line), 502);
  EXPECT_EQ(reader.Next(&line), 4);
  EXPECT_EQ(reader.Next(&line), -1);
  std::fclose(f);
}

}  // namespace
