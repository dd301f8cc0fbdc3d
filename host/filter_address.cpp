// Addresses as display filters have them.
#include <arpa/inet.h>

#include <algorithm>
#include <charconv>

#include "filter_tree.hpp"

namespace wirelines::host {

namespace {

// The number of one or two hexadecimal digits as a byte; empty when `text` is anything else.
std::string byte_of(std::string_view text) {
  std::uint8_t byte = 0;
  const auto* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, byte, 16);
  return error == std::errc() && stop == end && text.size() <= 2 ? std::string(1, static_cast<char>(byte)) : "";
}

// "c0a80100": as many bytes as `size` says, zeros in front left out.
std::string hex_bytes(std::string_view text, std::size_t size) {
  if (text.empty() || text.size() > 2 * size) return "";
  const auto digits = std::string(2 * size - text.size(), '0') + std::string(text);
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) bytes += byte_of({digits.data() + i, 2});
  return bytes.size() == size ? bytes : "";
}

// Twelve digits, or six groups of one or two set apart by the same sign.
std::string mac_bytes(std::string_view text) {
  constexpr std::size_t kSize = 6;
  if (text.size() == 2 * kSize && text.find_first_of(":-.") == std::string_view::npos) return hex_bytes(text, kSize);
  const auto between = text.find_first_of(":-.");
  if (between == std::string_view::npos) return "";
  const char sign = text[between];
  std::string bytes;
  for (std::size_t groups = 1;; groups++) {
    const auto end = std::min(text.find(sign), text.size());
    const auto byte = byte_of(text.substr(0, end));
    if (byte.empty() || groups > kSize) return "";
    bytes += byte;
    if (end == text.size()) return groups == kSize ? bytes : "";
    text.remove_prefix(end + 1);
  }
}

// "1.00005e005301": network and node.
std::string ipx_bytes(std::string_view text) {
  const auto end = text.find_first_of(".:");
  if (end == std::string_view::npos) return "";
  const auto network = hex_bytes(text.substr(0, end), 4);
  const auto node = mac_bytes(text.substr(end + 1));
  return network.empty() || node.empty() ? "" : network + node;
}

template <int Family, std::size_t Size>
std::string ip_bytes(std::string_view text) {
  std::string bytes(Size, '\0');
  return inet_pton(Family, std::string(text).c_str(), bytes.data()) == 1 ? bytes : "";
}

std::string address_bytes(FilterType type, std::string_view text) {
  switch (type) {
    case FilterType::kHex: return hex_bytes(text.starts_with("0x") ? text.substr(2) : text, 4);
    case FilterType::kMac: return mac_bytes(text);
    case FilterType::kIp: return ip_bytes<AF_INET, 4>(text);
    case FilterType::kIp6: return ip_bytes<AF_INET6, 16>(text);
    case FilterType::kIpx: return ipx_bytes(text);
    case FilterType::kStation:
      for (const auto kind : {FilterType::kMac, FilterType::kIp, FilterType::kIp6, FilterType::kIpx}) {
        if (auto bytes = address_bytes(kind, text); !bytes.empty()) return bytes;
      }
      return "";
    default: return "";
  }
}

}  // namespace

Wanted filter_address(FilterType type, std::string_view text) {
  const auto slash = text.find('/');
  Wanted wanted{.form = Wanted::Form::kAddress, .bytes = address_bytes(type, text.substr(0, slash))};
  wanted.bits = 8 * wanted.bytes.size();
  if (slash == std::string_view::npos) return wanted;
  std::size_t bits = 0;
  const auto* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + slash + 1, end, bits);
  if (error != std::errc() || stop != end || bits > wanted.bits) return {};
  wanted.bits = bits;
  return wanted;
}

}  // namespace wirelines::host
