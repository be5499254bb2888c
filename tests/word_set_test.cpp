// The word set: membership with repeats and case, and its 29-slot table.
#include <string>

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

  // A second set is apart from the first.
  int t = vcCWordMSet_New();
  EXPECT_EQ(t, 2);
  EXPECT_EQ(vcCWordMSet_IsWordExists(t, "pear"), 0);

  // One delete frees the set with its repeats, and the slot comes back.
  vcCWordMSet_Delete(s);
  EXPECT_EQ(vcCWordMSet_IsWordExists(s, "pear"), 0);
  EXPECT_EQ(vcCWordMSet_New(), 1);
  EXPECT_EQ(vcCWordMSet_IsWordExists(1, "pear"), 0);

  // Handle 0, and any handle with nothing behind it, is ignored everywhere.
  for (int empty : {0, -1, 5, 30}) {
    vcCWordMSet_AddWord(empty, "x");
    EXPECT_EQ(vcCWordMSet_IsWordExists(empty, "x"), 0);
    vcCWordMSet_Delete(empty);
  }
}

TEST_F(WordSet, TheThirtiethNewAnswersZero) {
  for (int i = 1; i <= 29; ++i) ASSERT_EQ(vcCWordMSet_New(), i);
  EXPECT_EQ(vcCWordMSet_New(), 0);
  vcCWordMSet_Delete(17);
  EXPECT_EQ(vcCWordMSet_New(), 17);
}

}  // namespace
