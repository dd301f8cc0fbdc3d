// A host in C++ with the modules that come with the library: the name given here has to come back in a line.
#include <vek4001.h>
#include <vek4003.h>
#include <wirelines.h>

#include <array>
#include <cstdio>
#include <cstring>

int main() {
  const std::array<uint8_t, 20> frame = {1,  2,  3,    4,    5,   6,   7,   8,   9,   10,
                                         11, 12, 0x12, 0x34, 'h', 'e', 'l', 'l', 'o', '!'};
  SetErrMessageHandler([](int32_t, const char*, void*) {}, nullptr);
  NickNameAdd(NICKNAME_STATION, "01:02:03:04:05:06", "fileserver");

  LineList list{};
  AnalyzeOutput(&list, frame.data(), static_cast<int32_t>(frame.size()), 1700000000, 0, WIRELINES_ASCII);
  bool found = false;
  for (int32_t i = 0; i < list.count; ++i) {
    const auto* line = static_cast<const DisplayLine*>(list.data[i]);
    if (std::strcmp(line->text, "[Destination Address] 010203040506 (fileserver)") == 0) found = true;
  }
  DelDspBuffer(&list);
  if (found && list.SetSize(3) == 0 && list.count == 3 && list.SetSize(0) == 0) {
    std::printf("wirelines %s\n", wirelines_version());
    return 0;
  }
  std::fputs("not what a host expects\n", stderr);
  return 1;
}
