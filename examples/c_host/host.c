/* A host in a page of C: decodes one frame, prints its lines, and has its own names.
 *
 *     cc host.c $(pkg-config --cflags --libs wirelines) -o host && ./host
 */
#include <stdio.h>
#include <string.h>
#include <vek4003.h>
#include <wirelines.h>

/* A question to a name server, as it was on the wire: Ethernet II, IPv4, UDP, DNS. */
static const char kFrame[] =
    "020000000001 020000000002 0800"
    "4500 0039 7F93 0000 4011 771D C0000202 C0000201"
    "EAE7 0035 0025 053B"
    "B6A8 0120 0001 0000 0000 0000 07 6578616D706C65 03 6E6574 00 0010 0001";

/* The library asks the name module, libvek4003, for names. A host with names of its own defines the six look-ups, and
 * the program's are taken instead of the module's. Each returns 1 and writes the name (at most 31 bytes for stations,
 * 35 for the rest), or returns 0. Without this block the module's names are shown: see NickNameLoad and NickNameAdd. */
static int32_t named(const char* key, const char* known, const char* name, char* out) {
  if (strcmp(key, known) != 0) return 0;
  strcpy(out, name);
  return 1;
}

int32_t StationToNickName(const char* address, char* out) {
  return named(address, "020000000001", "nameserver", out);
}
int32_t IpStrToNickName(const char* address, char* out) {
  return named(address, "192.0.2.2", "my desk", out);
}
int32_t Ip6StrToNickName(const char* address, char* out) {
  return named(address, "2001:DB8::2", "my desk", out);
}
int32_t PortStrToNickName(const char* port, char* out) {
  return named(port, "60135", "a port of the moment", out);
}
int32_t SapToName(const char* dsap, const char* ssap, char* out) {
  return strcmp(ssap, dsap) == 0 && named(dsap, "E0", "NetWare", out);
}
int32_t ProtocolTypeToName(const char* type, char* out) {
  return named(type, "88B5", "our experiment", out);
}

/* Reads pairs of hexadecimal digits; returns how many bytes there were. */
static int32_t bytes_of_hex(const char* hex, uint8_t* out, int32_t room) {
  int32_t count = 0;
  unsigned byte;
  int taken;
  while (count < room && sscanf(hex, " %2x%n", &byte, &taken) == 1) {
    out[count++] = (uint8_t)byte;
    hex += taken;
  }
  return count;
}

int main(void) {
  uint8_t frame[1514];
  const int32_t length = bytes_of_hex(kFrame, frame, (int32_t)sizeof frame);
  LineList list = {0};
  uint32_t top;
  int32_t i;

  /* Captured at 1795252948 seconds and 304985 microseconds since 1970; shown in the time zone of TZ. */
  top = AnalyzeOutput(&list, frame, length, 1795252948u, 304985u, WIRELINES_ASCII);
  printf("wirelines %s: %d lines, the innermost layer begins at line %u\n", wirelines_version(), (int)list.count, top);
  for (i = 0; i < list.count; ++i) {
    const DisplayLine* line = list.data[i];
    if (line->level == WIRELINES_BLANK) {
      printf("\n");
    } else if (line->endOffset == 0 || line->endOffset == UINT32_MAX) { /* it describes no bytes of the frame */
      printf("        %*s%s\n", (int)(2 * line->level), "", line->text);
    } else {
      printf("%3u-%-3u %*s%s\n", line->startOffset, line->endOffset, (int)(2 * line->level), "", line->text);
    }
  }
  DelDspBuffer(&list);
  return 0;
}
