// DNS (RFC 1035; AAAA: RFC 3596): a header of flags and counts, questions, and three sections of resource records.
// Called for UDP port 53.
#include "ipapps/dns.hpp"

#include <algorithm>

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"
#include "ipapps/name_printers.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(20, 3, 6);
constexpr uint32_t kHeaderSize = 12;

constexpr auto kTypeNames = names(
    {
        {1, "A"},     {2, "NS"},     {3, "MD"},      {4, "NF"},  // Kept: this is MF.
        {5, "CNAME"}, {6, "SOA"},    {7, "MB"},      {8, "MG"},      {9, "MR"},  {10, "NULL"},
        {11, "WKS"},  {12, "PTR"},   {13, "HINFO"},  {14, "MINFO"},  {15, "MX"}, {16, "TXT"},
        {28, "AAAA"}, {252, "AXFR"}, {253, "MAILB"}, {254, "MAILA"}, {255, "*"},
    },
    "Unknown");
static_assert(kTypeNames.distinct());

struct RecordSection {
  uint32_t count_at;  // where the header counts its records
  NumberFormat heading;
};
constexpr RecordSection kRecordSections[] = {
    {6, "--- Answer Section %u -----------------------"},
    {8, "--- Authority Records Section %u ------------"},
    {10, "--- Additional Records Section %u -----------"},
};

// The bytes that a name takes where it stands.
uint32_t DnsNameWireLength(Bytes name, int32_t remaining) {
  uint32_t i = 0;
  while (static_cast<int32_t>(i) < remaining) {
    const uint32_t b = name.u8(i);
    if (b == 0) return i + 1;
    if (b >= 0x80) return i + 2;
    i += b + 1;
  }
  return i;
}

// A name as text, each label with its dot; pointers are followed from the start of the message.
class DomainName {
 public:
  DomainName(Bytes name, uint32_t wire_length, Bytes message) : message_(message) {
    if (wire_length == 1 && name.u8(0) == 0) {
      put_dot();
    } else {
      expand(name, wire_length, 0);
    }
  }

  // A text ends at its first zero byte, also inside a label.
  [[nodiscard]] std::string_view text() const {
    const std::string_view all(text_, length_);
    return all.substr(0, all.find('\0'));
  }

 private:
  static constexpr uint32_t kRoom = 1500;  // a dot may stand behind it
  static constexpr uint32_t kMaxSteps = 64;
  static constexpr uint32_t kMaxDepth = 32;
  static constexpr uint32_t kPointedLength = 256;  // what a pointer points at counts as this long
  // In all, so that pointers that fan out from level to level end: as many as if each level had its own 64. The names
  // of stations follow one or two.
  static constexpr uint32_t kMaxPointers = kMaxDepth * kMaxSteps;

  void put_dot() { text_[length_++] = '.'; }

  void expand(Bytes source, uint32_t length, uint32_t depth) {
    uint32_t pos = 0;
    for (uint32_t step = 0; step < kMaxSteps; ++step) {
      if (done_ || length <= pos + 1 || length_ >= kRoom) return;
      const uint32_t b = source.u8(pos);
      if (b >= 0x80) {
        follow(source.be16(pos) % 0x4000, depth);
        pos += 2;
        continue;
      }
      if (length < pos + b || length_ + b > kRoom) return;
      const auto label = source.sub(pos + 1, static_cast<int32_t>(b)).text();
      length_ += static_cast<uint32_t>(label.copy(text_ + length_, label.size()));
      done_ = label.size() < b;  // the rest of the label reads as zero, and so the text ends
      if (done_) return;
      put_dot();
      pos += b + 1;
      done_ = source.u8(pos) == 0;
    }
  }

  void follow(uint32_t offset, uint32_t depth) {
    done_ = depth == kMaxDepth || pointers_++ == kMaxPointers;
    if (done_) return;
    const Bytes target = message_.from(offset);
    if (target.u8(0) != 0) return expand(target, kPointedLength, depth + 1);
    put_dot();
    done_ = true;
  }

  Bytes message_;
  char text_[kRoom + 1];
  uint32_t length_ = 0;
  uint32_t pointers_ = 0;
  bool done_ = false;
};

// The bytes of `range` as a name; nothing when there are none.
void DspDnsName(Section& s, Range range, std::string_view label, Bytes name, Bytes message) {
  const auto wire_length = static_cast<int32_t>(range.last + 1 - range.first);
  if (wire_length < 1) return;
  const DomainName domain(name, static_cast<uint32_t>(wire_length), message);
  std::string_view text = domain.text();
  const std::size_t room = 80 - label.size();
  if (text.size() <= room) {
    s.line(range, "%s%s", label, text);
    return;
  }
  // Kept: each line of a long name but the last shows all that is left of it, so that its end is repeated.
  for (; text.size() > room; text.remove_prefix(room)) s.line(range, "%s", text);
  s.line(range, "           %s", text);
}

void DspDnsType(Section& s, Range range, uint16_t type) {
  s.line(range, "[TYPE] %u (%s)", type, kTypeNames(type));
}

void DspIp6Address(Section& s, Range range, Bytes address) {
  const TextBuffer text("%X:%X:%X:%X:%X:%X:%X:%X", address.be16(0), address.be16(2), address.be16(4), address.be16(6),
                        address.be16(8), address.be16(10), address.be16(12), address.be16(14));
  s.line(range, "[IPv6 Address] %s %s", text.view(), parens(ip6_nickname(text.bytes)));
}

// Ranges count from the first byte of the RDATA.
void DspDnsSoa(Section& s, Bytes rdata, uint32_t length, Bytes message) {
  const uint32_t m = DnsNameWireLength(rdata, static_cast<int32_t>(length));
  const Bytes rname = rdata.from(m);
  const uint32_t q = m + DnsNameWireLength(rname, static_cast<int32_t>(length - m));
  DspDnsName(s, at(0, m - 1), "[MName] ", rdata, message);
  DspDnsName(s, at(m, q - 1), "[RName] ", rname, message);
  s.value(at(q, q + 3), "[SERIAL] %lu", rdata.be32(q));
  s.value(at(q + 4, q + 7), "[REFRESH] %lu sec", rdata.be32(q + 4));
  s.value(at(q + 8, q + 11), "[RETRY] %lu sec", rdata.be32(q + 8));
  s.value(at(q + 12, q + 15), "[EXPIRE] %lu sec", rdata.be32(q + 12));
  s.value(at(q + 16, q + 19), "[MINIMUM] %lu sec", rdata.be32(q + 16));
}

// `range` is that of the RDATA.
void rdata_lines(Section& s, Range range, uint16_t type, Bytes rdata, uint32_t length, Bytes message) {
  const uint32_t first = range.first;
  switch (type) {
    case 1: DspIpAddress(s.list(), rdata, s.field(at(first, first + 3))); break;
    case 2: DspDnsName(s, range, "[NS] ", rdata, message); break;
    case 5: DspDnsName(s, range, "[CNAME] ", rdata, message); break;
    case 12: DspDnsName(s, range, "[PTR] ", rdata, message); break;
    case 6:
      // Kept: nothing takes this step back, so that the ranges of all later lines are shifted by it.
      advance(first);
      DspDnsSoa(s, rdata, length, message);
      break;
    case 15:
      s.value(at(first, first + 1), "[PREFERENCE] %u", rdata.be16(0));
      DspDnsName(s, at(first + 2, range.last), "[EXCHANGE] ", rdata.from(2), message);
      break;
    case 28:
      // Kept: a range of four bytes for an address of sixteen.
      DspIp6Address(s, at(first, first + 3), rdata);
      break;
    default:
      s.line(range, "[RESOURCE]");
      hex_dump(s.list(), rdata.first(static_cast<int32_t>(length)), s.attributes(s.codes().field, 2, range));
      break;
  }
}

// A record whose name takes w bytes and whose RDATA takes rd.
void DnsRecordAnalyze(Section& s, Bytes record, uint32_t w, uint32_t rd, Bytes message) {
  const uint16_t type = record.be16(w);
  DspDnsName(s, at(0, w - 1), "[NAME] ", record, message);
  DspDnsType(s, at(w, w + 1), type);
  DspRecordClass(s.list(), record.be16(w + 2), s.field(at(w + 2, w + 3)));
  s.value(at(w + 4, w + 7), "[TTL] %lu sec", record.be32(w + 4));
  DspDataLength16(s.list(), record.be16(w + 8), s.field(at(w + 8, w + 9)));
  // Kept: the signs are such that RDATA is shown also when the message ends before it.
  if (record.size() <= static_cast<int32_t>(w - rd - 10)) return;
  rdata_lines(s, at(w + 10, w + 9 + rd), type, record.from(w + 10), rd, message);
}

}  // namespace

void DnsAnalyze(LineList& list, Bytes data) {
  if (data.size() < static_cast<int32_t>(kHeaderSize)) return remainder(list, data);

  Section s(list, kLayer);
  s.title(at(0, static_cast<uint32_t>(data.size()) - 1), "DNS Message");
  DspId(list, data.be16(0), s.field(at(0, 1)));
  // Kept: operations and answers carry the name service's names, so that a status query is unknown.
  DspNsFlags(list, data.be16(2), BroadcastFlag::kHide, s.field(at(2, 3)));
  DspSectionCounts(list, data, s.field(at(4, 11)));

  advance(kHeaderSize);
  Bytes rest = data.from(kHeaderSize);
  for (uint32_t i = 1; i <= data.be16(4); ++i) {
    if (!s || rest.size() < 0 || !rest.has(0)) return;
    const uint32_t w = DnsNameWireLength(rest, rest.size());
    s.value(at(0, w + 3), "--- Question section %u ---------------------", i);
    DspDnsName(s, at(0, w - 1), "[QNAME] ", rest, data);
    DspDnsType(s, at(w, w + 1), rest.be16(w));
    DspRecordClass(list, rest.be16(w + 2), s.field(at(w + 2, w + 3)));
    advance(w + 4);
    rest = rest.from(w + 4);
  }

  for (const auto& section : kRecordSections) {
    for (uint32_t i = 1; i <= data.be16(section.count_at); ++i) {
      if (!s || rest.size() < 0 || !rest.has(0)) return;
      const uint32_t w = DnsNameWireLength(rest, rest.size());
      const uint32_t rd = rest.be16(w + 8);
      const uint32_t length = w + 10 + rd;
      s.value(at(0, length - 1), section.heading, i);
      DnsRecordAnalyze(s, rest, w, rd, data);
      advance(length);
      rest = rest.from(length);
    }
  }
}

}  // namespace wirelines
