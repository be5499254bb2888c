// CWordMSet: an ordered collection of words with repeats kept, for callers
// in Basic, which have no such container of their own.
//
// Words are ordered by their bytes as unsigned values, the shorter first
// when one begins the other; letters keep their case, so "Apple" and
// "apple" are two words. (std::string compares exactly so: its character
// traits compare bytes as unsigned char.)
#pragma once

#include <set>
#include <string>

#include "core/handle_table.h"

namespace tq {

class WordSet {
 public:
  void Add(const char* word) { words_.insert(word); }
  bool Contains(const char* word) const { return words_.find(word) != words_.end(); }

 private:
  std::multiset<std::string> words_;
};

// Handles 1 to 29; 0 when all are taken.
using WordSetTable = HandleTable<WordSet, 30, 0>;
WordSetTable& WordSets();

}  // namespace tq
