// Calls to the name module. Whatever it leaves in the buffer without answering 1 is not a name.
#include "core/nicknames.hpp"

#include "core/protocol_names.hpp"
#include "vek4003.h"

namespace wirelines {

Nickname station_nickname(const char* address) {
  Nickname name;
  if (StationToNickName(address, name.text_) != 1) name.text_[0] = 0;
  return name;
}

Nickname ip_nickname(const char* address) {
  Nickname name;
  if (IpStrToNickName(address, name.text_) != 1) name.text_[0] = 0;
  return name;
}

Nickname ip6_nickname(const char* address) {
  Nickname name;
  if (Ip6StrToNickName(address, name.text_) != 1) name.text_[0] = 0;
  return name;
}

Nickname port_nickname(uint16_t port) {
  Nickname name;
  const TextBuffer key("%u", port);
  if (PortStrToNickName(key.bytes, name.text_) != 1) name.text_[0] = 0;
  return name;
}

Nickname sap_nickname(const char* dsap, const char* ssap) {
  Nickname name;
  if (SapToName(dsap, ssap, name.text_) != 1) name.text_[0] = 0;
  return name;
}

Nickname type_nickname(uint16_t ether_type) {
  Nickname name;
  const TextBuffer key("%0.4X", ether_type);
  if (ProtocolTypeToName(key.bytes, name.text_) != 1) name.text_[0] = 0;
  return name;
}

TypeName::TypeName(uint16_t ether_type) : known_(TypeToProtocolName(ether_type)) {
  if (known_.empty()) nickname_ = type_nickname(ether_type);
}

}  // namespace wirelines
