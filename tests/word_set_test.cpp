// The word set: membership with repeats and case, its byte order, and its
// 29-slot table.
#include <string>
#include <vector>

#include "dict/word_set.h"
#include "test_util.h"
#include "tqcomm2006.h"

using tqtest::G;

namespace {

// Each test starts with an empty table, however the tests are run.
class WordSet : public ::testing::Test {
 protected:
  void SetUp() override {
    for (int h = 1; h <= 29; ++h) vcCWordMSet_Delete(h);
  }
};

TEST_F(WordSet, MembershipIsExactAndKeepsRepeats) {
  int s = vcCWordMSet_New();
  ASSERT_EQ(s, 1);
  vcCWordMSet_AddWord(s, "Apple");
  vcCWordMSet_AddWord(s, "pear");
  vcCWordMSet_AddWord(s, "pear");
  vcCWordMSet_AddWord(s, G(u8"苹果").c_str());
  vcCWordMSet_AddWord(s, "");
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "Apple"), 1);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "apple"), 0);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "pear"), 1);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "pea"), 0);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "pears"), 0);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, G(u8"苹果").c_str()), 1);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, G(u8"苹").c_str()), 0);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, ""), 1);
  EXPECT_EQ(tq::WordSets().Get(s)->words().count("pear"), 2u);

  // A second set is apart from the first.
  int t = vcCWordMSet_New();
  EXPECT_EQ(t, 2);
  EXPECT_EQ(vcCWordMSet_IsWordExists(t, "pear"), 0);

  // One delete frees the set with its repeats, and the slot comes back.
  vcCWordMSet_Delete(s);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "pear"), 0);
  EXPECT_EQ(vcCWordMSet_New(), 1);
  EXPECT_EQ(vcCWordMSet_IsWordExists(1, "pear"), 0);

  // Handle 0 is ignored everywhere.
  vcCWordMSet_AddWord(0, "x");
  EXPECT_EQ(vcCWordMSet_IsWordExists(0, "x"), 0);
  vcCWordMSet_Delete(0);
}

TEST_F(WordSet, OrderIsByUnsignedBytesShorterFirst) {
  int s = vcCWordMSet_New();
  std::string high = G(u8"啊");  // bytes above 127 sort after every ASCII byte
  for (const char* w : {"b", "ab", "a", "B", "abc", "b", "~"}) vcCWordMSet_AddWord(s, w);
  vcCWordMSet_AddWord(s, high.c_str());
  std::vector<std::string> order(tq::WordSets().Get(s)->words().begin(), tq::WordSets().Get(s)->words().end());
  EXPECT_EQ(order, (std::vector<std::string>{"B", "a", "ab", "abc", "b", "b", "~", high}));
}

TEST_F(WordSet, TheThirtiethNewAnswersZero) {
  for (int i = 1; i <= 29; ++i) ASSERT_EQ(vcCWordMSet_New(), i);
  EXPECT_EQ(vcCWordMSet_New(), 0);
  vcCWordMSet_Delete(17);
  EXPECT_EQ(vcCWordMSet_New(), 17);
}

}  // namespace
