// Names of protocol numbers.
#include "core/protocol_names.hpp"

#include "core/names.hpp"

namespace wirelines {

namespace {

constexpr auto kEtherTypes = names({
    {0x0800, "IP"},
    {0x86DD, "IPv6"},
    {0x8863, "PPPoE Discovery"},
    {0x8864, "PPPoE Session"},
    {0x0806, "ARP"},
    {0x8035, "RARP"},
    {0x8137, "IPX"},
    {0x8138, "IPX"},
    {0x814C, "SNMP"},
    {0x817D, "XTP"},
    {0x0600, "XNS"},
    {0x6002, "DEC Remote Console"},
    {0x6003, "DECnet"},
    {0x809B, "AppleTalk"},
    {0x80F3, "AppleTalk AARP"},
});
static_assert(kEtherTypes.distinct());

// By DSAP x 256 + SSAP.
constexpr auto kSapPairs = names({
    {0x0606, "IP"},
    {0xE0E0, "IPX"},
    {0xF0F0, "NetBIOS"},
    {0x8080, "XNS"},
});
static_assert(kSapPairs.distinct());

}  // namespace

std::string_view TypeToProtocolName(uint16_t ether_type) {
  return kEtherTypes(ether_type);
}

std::string_view SapPairToName(uint8_t dsap, uint8_t ssap) {
  return kSapPairs(uint32_t{dsap} << 8 | ssap);
}

}  // namespace wirelines
