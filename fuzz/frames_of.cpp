// usage: frames_of FOLDER TRACE...      writes each frame to a file of its own, as seeds for the fuzzers
#include <pcap/pcap.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
  for (int i = 2; i < argc; ++i) {
    char error[PCAP_ERRBUF_SIZE];
    pcap_t* const trace = pcap_open_offline(argv[i], error);
    if (trace == nullptr) {
      std::fprintf(stderr, "frames_of: %s\n", error);
      return 1;
    }
    const std::string stem = std::string(argv[1]) + '/' + std::filesystem::path(argv[i]).stem().string() + '-';
    pcap_pkthdr* header = nullptr;
    const u_char* data = nullptr;
    for (int n = 1; pcap_next_ex(trace, &header, &data) == 1; ++n) {
      std::ofstream(stem + std::to_string(n), std::ios::binary)
          .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(header->caplen));
    }
    pcap_close(trace);
  }
  return 0;
}
