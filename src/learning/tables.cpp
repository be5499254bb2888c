#include "learning/tables.h"

namespace tq {

BookTable& Books() {
  static BookTable table;
  return table;
}

WizardTable& Wizards() {
  static WizardTable table;
  return table;
}

}  // namespace tq
