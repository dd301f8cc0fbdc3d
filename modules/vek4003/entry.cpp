// Keys and names from text, and keys back to text.
#include "entry.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <optional>
#include <span>

namespace wirelines::vek4003 {

namespace {

// All of `text` as a number of 1 to `digits` digits.
std::optional<std::uint64_t> number(std::string_view text, int base, std::size_t digits) {
  if (text.empty() || text.size() > digits) return {};
  std::uint64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc() || stop != end) return {};
  return value;
}

std::optional<Key> low_key(std::optional<std::uint64_t> value) {
  if (!value) return {};
  return Key{0, *value};
}

// Twelve digits, or six groups of one or two set apart by one kind of separator.
std::optional<Key> station_key(std::string_view text) {
  const auto at = text.find_first_of(":-.");
  if (at == std::string_view::npos) return text.size() == 12 ? low_key(number(text, 16, 12)) : std::nullopt;
  const char separator = text[at];
  std::uint64_t address = 0;
  for (int group = 0; group < 6; ++group) {
    const auto end = group < 5 ? text.find(separator) : text.size();
    if (end == std::string_view::npos) return {};
    const auto value = number(text.substr(0, end), 16, 2);
    if (!value) return {};
    address = address << 8 | *value;
    text.remove_prefix(group < 5 ? end + 1 : end);
  }
  return Key{0, address};
}

Key from_bytes(std::span<const std::uint8_t> bytes) {
  Key key;
  for (const auto byte : bytes) {
    key.high = key.high << 8 | key.low >> 56;
    key.low = key.low << 8 | byte;
  }
  return key;
}

// An address in one of the forms that the system itself understands.
template <std::size_t kSize>
std::optional<Key> address_key(int family, std::string_view text) {
  std::array<char, INET6_ADDRSTRLEN> terminated{};
  if (text.size() >= terminated.size()) return {};
  text.copy(terminated.data(), text.size());
  std::array<std::uint8_t, kSize> bytes{};
  if (inet_pton(family, terminated.data(), bytes.data()) != 1) return {};
  return from_bytes(bytes);
}

// The decoder shows an address either in full or with its first run of zero groups left out, be it one group long; a
// run at the start leaves one colon instead of two (":1"). Read here are both and the usual compressed form.
std::optional<Key> groups_key(std::string_view text) {
  constexpr std::size_t kNowhere = 9;
  std::array<std::uint16_t, 8> groups{};
  std::size_t count = 0;
  std::size_t gap = kNowhere;
  if (text.size() < 2) return {};
  if (text.front() == ':') {
    gap = 0;
    text.remove_prefix(text.starts_with("::") ? 2 : 1);
  }
  while (!text.empty()) {
    const auto end = std::min(text.find(':'), text.size());
    const auto value = number(text.substr(0, end), 16, 4);
    if (!value || count == groups.size()) return {};
    groups[count++] = static_cast<std::uint16_t>(*value);
    text.remove_prefix(end);
    if (text.empty()) break;
    if (text.starts_with("::")) {
      if (gap != kNowhere) return {};
      gap = count;
      text.remove_prefix(2);
    } else {
      text.remove_prefix(1);
      if (text.empty()) return {};
    }
  }
  if (gap == kNowhere ? count != groups.size() : count == groups.size()) return {};
  if (gap != kNowhere) {
    std::rotate(&groups[gap], groups.data() + count, groups.data() + groups.size());
  }
  Key key;
  for (const auto group : groups) {
    key.high = key.high << 16 | key.low >> 48;
    key.low = key.low << 16 | group;
  }
  return key;
}

std::optional<Key> ip6_key(std::string_view text) {
  const auto key = groups_key(text);
  return key ? key : address_key<16>(AF_INET6, text);  // "::FFFF:192.0.2.1"
}

std::optional<Key> port_key(std::string_view text) {
  if (text.size() > 1 && text.front() == '0') return {};
  const auto port = number(text, 10, 5);
  return port && *port <= 0xFFFF ? low_key(port) : std::nullopt;
}

std::optional<Key> sap_key(std::string_view text) {
  std::array<char, 4> digits{};
  if (text.size() == 5 && text[2] == '/') {
    digits = {text[0], text[1], text[3], text[4]};
    text = {digits.data(), digits.size()};
  }
  return text.size() == 4 ? low_key(number(text, 16, 4)) : std::nullopt;
}

std::optional<Key> type_key(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
  return low_key(number(text, 16, 4));
}

bool is_control(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

}  // namespace

const char* parse_key(NickNameKind kind, std::string_view text, Key& key) {
  std::optional<Key> found;
  const char* reason = "there is no such kind of name";
  switch (kind) {
    case NICKNAME_STATION:
      found = station_key(text);
      reason = "the key is not a MAC address of twelve hexadecimal digits or six groups";
      break;
    case NICKNAME_IP:
      found = address_key<4>(AF_INET, text);
      reason = "the key is not an IPv4 address";
      break;
    case NICKNAME_IP6:
      found = ip6_key(text);
      reason = "the key is not an IPv6 address";
      break;
    case NICKNAME_PORT:
      found = port_key(text);
      reason = "the key is not a port number from 0 to 65535";
      break;
    case NICKNAME_SAP:
      found = sap_key(text);
      reason = "the key is not a DSAP and SSAP of two hexadecimal digits each";
      break;
    case NICKNAME_TYPE:
      found = type_key(text);
      reason = "the key is not an EtherType of one to four hexadecimal digits";
      break;
    default: break;
  }
  if (!found) return reason;
  key = *found;
  return nullptr;
}

const char* parse_name(NickNameKind kind, std::string_view text, Name& name) {
  if (text.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos) return "the name is empty";
  if (kind == NICKNAME_STATION && text.size() > 31) return "the name is longer than 31 bytes";
  if (text.size() > 35) return "the name is longer than 35 bytes";
  if (std::any_of(text.begin(), text.end(), is_control)) return "the name holds a control byte";
  if (text.front() == ' ' || text.back() == ' ') return "the name begins or ends with a blank";
  if (text.front() == '#' || text.find(" #") != std::string_view::npos) {
    return "the name holds a '#' that begins a comment in a file of names";
  }
  name = {};
  text.copy(name.text.data(), text.size());
  name.size = static_cast<std::uint8_t>(text.size());
  return nullptr;
}

const char* parse_entry(NickNameKind kind, std::string_view key, std::string_view name, Entry& entry) {
  Entry made;
  made.kind = kind;
  if (const char* reason = parse_key(kind, key, made.key)) return reason;
  if (const char* reason = parse_name(kind, name, made.name)) return reason;
  entry = made;
  return nullptr;
}

KeyText key_text(NickNameKind kind, const Key& key) {
  KeyText text{};
  std::array<std::uint8_t, 16> bytes{};
  for (std::size_t i = 0; i < 8; ++i) {
    bytes[i] = static_cast<std::uint8_t>(key.high >> (56 - 8 * i));
    bytes[i + 8] = static_cast<std::uint8_t>(key.low >> (56 - 8 * i));
  }
  const auto value = static_cast<unsigned long long>(key.low);
  switch (kind) {
    case NICKNAME_STATION: (void)std::snprintf(text.data(), text.size(), "%012llX", value); break;
    case NICKNAME_IP: inet_ntop(AF_INET, &bytes[12], text.data(), static_cast<socklen_t>(text.size())); break;
    case NICKNAME_IP6: inet_ntop(AF_INET6, bytes.data(), text.data(), static_cast<socklen_t>(text.size())); break;
    case NICKNAME_PORT: (void)std::snprintf(text.data(), text.size(), "%llu", value); break;
    case NICKNAME_SAP:
    case NICKNAME_TYPE: (void)std::snprintf(text.data(), text.size(), "%04llX", value); break;
  }
  return text;
}

}  // namespace wirelines::vek4003
