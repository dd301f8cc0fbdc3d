// Build step: writes the table from UTF-16 units to code page 932, as this platform's iconv knows it.
#include <iconv.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  const iconv_t to_932 = iconv_open("CP932", "UTF-16LE");
  if (to_932 == reinterpret_cast<iconv_t>(-1)) {
    std::fputs("make_codepage932: iconv does not know CP932\n", stderr);
    return EXIT_FAILURE;
  }
  std::FILE* const out = argc == 2 ? std::fopen(argv[1], "w") : nullptr;
  if (out == nullptr) {
    std::fputs("usage: make_codepage932 FILE\n", stderr);
    return EXIT_FAILURE;
  }
  for (std::uint32_t unit = 0; unit < 0x10000; ++unit) {
    char in[2] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    char bytes[8] = {};
    char* from = in;
    char* to = bytes;
    std::size_t in_left = sizeof in;
    std::size_t out_left = sizeof bytes;
    iconv(to_932, nullptr, nullptr, nullptr, nullptr);
    unsigned code = '?';
    if (iconv(to_932, &from, &in_left, &to, &out_left) != static_cast<std::size_t>(-1)) {
      const auto first = static_cast<unsigned char>(bytes[0]);
      const auto second = static_cast<unsigned char>(bytes[1]);
      const auto n = to - bytes;
      if (n == 1) code = first;
      if (n == 2) code = first * 256U + second;
    }
    std::fprintf(out, "%u,%c", code, unit % 16 == 15 ? '\n' : ' ');
  }
  iconv_close(to_932);
  return std::fclose(out) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
