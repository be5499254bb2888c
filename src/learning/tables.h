// The handle tables of the learning family. The wizard reaches its book
// through the book table, so both live here.
#pragma once

#include "core/handle_table.h"
#include "learning/book.h"
#include "learning/wizard.h"

namespace tq {

using BookTable = HandleTable<Book, 30, 0>;  // handles 1..29; full answers 0

BookTable& Books();

using WizardTable = HandleTable<Wizard, 30, -1>;  // handles 1..29; full answers -1

WizardTable& Wizards();

}  // namespace tq
