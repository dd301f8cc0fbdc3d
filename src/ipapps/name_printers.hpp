// Lines that the NetBIOS services and DNS share.
#pragma once

#include <string_view>

#include "core/lines.hpp"
#include "core/section.hpp"

namespace wirelines {

constexpr Layer kNetBiosLayer = layer(29, 3, 5);

// The flags word of a name-service or DNS header; only the name service has a broadcast flag to show.
enum class BroadcastFlag { kShow, kHide };
void DspNsFlags(LineList& list, uint16_t flags, BroadcastFlag broadcast, const LineAttributes& attributes);

// The four counts of a name-service or DNS header.
void DspSectionCounts(LineList& list, Bytes header, const LineAttributes& attributes);

void DspRecordClass(LineList& list, uint16_t record_class, const LineAttributes& attributes);

// A first-level encoded name, its 16th character, the name's type, included. Empty when its first byte is no length.
class NetBiosName {
 public:
  static constexpr uint32_t kSize = 16;

  operator std::string_view() const { return {text_, length_}; }
  [[nodiscard]] bool empty() const { return length_ == 0; }

 private:
  friend NetBiosName DecodeNetBiosName(Bytes encoded);

  char text_[kSize] = {};
  uint32_t length_ = 0;
};

NetBiosName DecodeNetBiosName(Bytes encoded);

// The label and the name; no line when the name is empty.
void DspNetBiosName(LineList& list, std::string_view label, Bytes encoded, const LineAttributes& attributes);

// What a NetBIOS datagram or session carries.
void netbios_payload(LineList& list, Bytes payload);

}  // namespace wirelines
