#include "platform/text_codec.h"

#include <iconv.h>

namespace tq::platform {

std::string GbkToUtf8(const std::string& gbk) {
  iconv_t cd = iconv_open("UTF-8", "GBK");
  if (cd == reinterpret_cast<iconv_t>(-1)) return gbk;
  std::string in = gbk;
  std::string out(in.size() * 3 + 8, '\0');  // never more than three bytes for one
  char* src = in.data();
  size_t left = in.size();
  char* dst = out.data();
  size_t room = out.size();
  while (left > 0) {
    if (iconv(cd, &src, &left, &dst, &room) != static_cast<size_t>(-1)) break;
    *dst++ = '?';
    --room;
    ++src;
    --left;
  }
  iconv_close(cd);
  out.resize(out.size() - room);
  return out;
}

}  // namespace tq::platform
