/* A host in C: decodes a frame, looks at its lines and frees them. */
#include "wirelines.h"

#include <stdio.h>
#include <string.h>

#include "vek4001.h"
#include "vek4003.h"

static const uint8_t kFrame[20] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0x12, 0x34, 'h', 'e', 'l', 'l', 'o', '!'};

int main(void) {
  LineList list = {0};
  const DisplayLine* last;
  int ok = 1;
  uint32_t top;

  NickNameAdd(NICKNAME_STATION, "01:02:03:04:05:06", "fileserver");
  top = AnalyzeOutput(&list, kFrame, (int32_t)sizeof kFrame, 1700000000, 0, WIRELINES_ASCII);
  ok &= top == 0 && list.count > 8;
  ok &= strcmp(((const DisplayLine*)list.data[3])->text, "[Destination Address] 010203040506 (fileserver)") == 0;
  last = (const DisplayLine*)list.data[list.count - 1];
  ok &= strstr(last->text, "68 65 6C 6C 6F 21") != NULL && last->startOffset == 14 && last->endOffset == 19;
  DelDspBuffer(&list);
  ok &= list.count == 0;

  ok &= HexOutput(&list, kFrame, 0, WIRELINES_ASCII) == 0 && list.count == 0;
  if (!ok) fputs("c_host: not what a host expects\n", stderr);
  return ok ? 0 : 1;
}
