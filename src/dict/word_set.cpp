#include "dict/word_set.h"

namespace tq {

WordSetTable& WordSets() {
  static WordSetTable table;
  return table;
}

}  // namespace tq
