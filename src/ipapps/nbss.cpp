// NetBIOS session service (RFC 1002, section 4.3): a 4-byte header and one message a segment. Called for TCP port 139.
#include "ipapps/nbss.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"
#include "ipapps/name_printers.hpp"

namespace wirelines {

namespace {

constexpr uint32_t kHeaderSize = 4;
constexpr uint8_t kSessionRequest = 0x81;

constexpr auto kTypeNames = names({
    {0x00, "SESSION MESSAGE"},
    {kSessionRequest, "SESSION REQUEST"},
    {0x82, "POSITIVE SESSION RESPONSE"},
    {0x83, "NEGATIVE SESSION RESPONSE"},
    {0x84, "RETARGET SESSION RESPONSE"},
    {0x85, "SESSION KEEP ALIVE"},
});
static_assert(kTypeNames.distinct());

}  // namespace

void NbssAnalyze(LineList& list, Bytes data) {
  if (data.size() < static_cast<int32_t>(kHeaderSize)) return;

  const uint8_t type = data.u8(0);

  Section s(list, kNetBiosLayer);
  s.title(at(0, 3), "NetBIOS Session Service");
  s.line(at(0), "[Type] %u %s", type, parens(kTypeNames(type)));
  s.value(at(1), "[Flags] %u", data.u8(1));
  DspDataLength16(list, data.be16(2), s.field(at(2, 3)));
  if (!s) return;

  advance(kHeaderSize);
  const Bytes message = data.from(kHeaderSize);
  if (type == kSessionRequest) {
    DspNetBiosName(list, "[CALLED NAME] ", message, s.field(at(0, 33)));
    DspNetBiosName(list, "[CALLING NAME] ", message.from(34), s.field(at(34, 67)));
    return;
  }
  netbios_payload(list, message);
}

}  // namespace wirelines
