// The user's own names, from the name module.
#pragma once

#include <string_view>

#include "core/bytes.hpp"
#include "core/format.hpp"

namespace wirelines {

// A nickname, or an empty text when the user gave none. Shown as parens(name).
class Nickname {
 public:
  operator std::string_view() const { return text_; }
  operator Parens() const { return {text_}; }
  [[nodiscard]] bool empty() const { return text_[0] == 0; }
  [[nodiscard]] uint32_t length() const { return static_cast<uint32_t>(std::string_view(text_).size()); }

 private:
  friend Nickname station_nickname(const char* address);
  friend Nickname ip_nickname(const char* address);
  friend Nickname ip6_nickname(const char* address);
  friend Nickname port_nickname(uint16_t port);
  friend Nickname sap_nickname(const char* dsap, const char* ssap);
  friend Nickname type_nickname(uint16_t ether_type);

  char text_[64] = {};  // the longest name has 35 bytes; a name module of the host's own may be less exact
};

Nickname station_nickname(const char* address);  // "0123456789AB"
Nickname ip_nickname(const char* address);       // "192.0.2.1"
Nickname ip6_nickname(const char* address);      // as the IPv6 address formatters write it
Nickname port_nickname(uint16_t port);
Nickname sap_nickname(const char* dsap, const char* ssap);  // "E0", "E0"
Nickname type_nickname(uint16_t ether_type);

// Addresses as the decoders show them.
inline TextBuffer mac_text(Bytes mac) {
  return TextBuffer("%0.2X%0.2X%0.2X%0.2X%0.2X%0.2X", mac.u8(0), mac.u8(1), mac.u8(2), mac.u8(3), mac.u8(4), mac.u8(5));
}
inline TextBuffer ip_text(Bytes ip) {
  return TextBuffer("%u.%u.%u.%u", ip.u8(0), ip.u8(1), ip.u8(2), ip.u8(3));
}

// The name of an EtherType: the table's, or else the user's.
class TypeName {
 public:
  explicit TypeName(uint16_t ether_type);
  operator Parens() const { return {known_.empty() ? std::string_view(nickname_) : known_}; }

 private:
  std::string_view known_;
  Nickname nickname_;
};

}  // namespace wirelines
