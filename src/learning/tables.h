// The handle tables of the learning family. The wizard reaches its book
// through the book table, so both live here.
#pragma once

#include "core/handle_table.h"
#include "learning/book.h"

namespace tq {

using BookTable = HandleTable<Book, 30, 0>;  // handles 1..29; full answers 0

BookTable& Books();

}  // namespace tq
