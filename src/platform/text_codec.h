// Text for formats that are not GBK: the library's text is GBK everywhere
// else, and converts only where a file of another world is written.
#pragma once

#include <string>

namespace tq::platform {

// GBK to UTF-8; a byte sequence that is not GBK becomes "?".
std::string GbkToUtf8(const std::string& gbk);

}  // namespace tq::platform
