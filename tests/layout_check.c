/* Compiled as C, for 32 and for 64 bits: the static assertions in the public
 * headers hold the caller-owned records to their boundary layout. */
#include "tqcomm2006.h"
#include "tqhost.h"

int tq_layout_check_dummy;
