// The page exports: thin wrappers over the page generators.
#include "html/detail_page.h"
#include "html/printable_page.h"
#include "tqcomm2006.h"

extern "C" {

TQ_API void TQ_CALL vcCreateHtmlDetail(const uint32_t* lengths, const char* text, const char* outPath,
                                       int soundFlag) {
  tq::html::CreateDetailPage(lengths, text, outPath, soundFlag);
}

TQ_API int TQ_CALL vcGenPrintableHtml(const char* srcPath, const char* dstPath, const char* answerPath,
                                      int blankMode, int numbered) {
  return tq::html::GenPrintablePage(srcPath, dstPath, answerPath, blankMode, numbered);
}

}  // extern "C"
