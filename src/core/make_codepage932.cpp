// Build step: writes the table from UTF-16 units to code page 932, as this platform's iconv knows it.
#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>

int main(int argc, char** argv) {
  errno = 0;
  iconv_t to_932 = iconv_open("CP932", "UTF-16LE");
  if (errno != 0) {
    std::cerr << "make_codepage932: iconv does not know CP932\n";
    return EXIT_FAILURE;
  }
  if (argc != 2) {
    std::cerr << "usage: make_codepage932 FILE\n";
    return EXIT_FAILURE;
  }
  std::ofstream out(argv[1]);
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
    out << code << (unit % 16 == 15 ? ",\n" : ", ");
  }
  iconv_close(to_932);
  out.close();
  return out ? EXIT_SUCCESS : EXIT_FAILURE;
}
