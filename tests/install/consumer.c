/* A front end in miniature, built against an installed copy of the library:
 * it makes a word book of two words, opens it as a front end does and
 * prints the second word back, then makes and frees a host surface. */
#include <stdio.h>
#include <string.h>

#include "tqcomm2006.h"
#include "tqhost.h"

int main(void) {
  char word[200], explanation[4000], pron[4000];
  int book, words, dc;
  remove("consumer.idx");
  remove("consumer.idx.lib");
  book = vcCOrvexBook_New();
  if (book <= 0) return 1;
  vcCOrvexBook_SetBookFileName(book, "consumer.idx", NULL);
  if (vcCOrvexBook_AppendWord(book, 0, "apple", "n. \xC6\xBB\xB9\xFB", "['ApEl]", NULL, NULL, 0) != 1 ||
      vcCOrvexBook_AppendWord(book, 0, "book", "n. \xCA\xE9", "[buk]", NULL, NULL, 0) != 1) {
    fprintf(stderr, "consumer: cannot write the book\n");
    return 1;
  }
  words = vcCOrvexBook_OpenIdx(book, "rb");
  if (words != 2 || vcCOrvexBook_OpenLib(book, "rb") < 0) {
    fprintf(stderr, "consumer: cannot open the book (%d words)\n", words);
    return 1;
  }
  vcCOrvexBook_GetWordByNo(book, 1, word, explanation, pron, NULL, NULL, NULL);
  vcCOrvexBook_CloseIdx(book);
  vcCOrvexBook_CloseLib(book);
  vcCOrvexBook_Delete(book);
  dc = tqHost_CreateDC(16, 16);
  if (dc <= 0) return 1;
  tqHost_DeleteDC(dc);
  printf("%d words; 1: %s %s\n", words, word, pron);
  return strcmp(word, "book") == 0 && strcmp(explanation, "n. \xCA\xE9") == 0 ? 0 : 1;
}
