// A mutator for the targets that take frames: it changes a message of SMB, DNS, the NetBIOS name service, SNMP, DHCP or
// NCP by its own parts, then mends the lengths and checksums around it, so that a decoder does not stop at the header.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using Text = std::vector<std::uint8_t>;

constexpr std::size_t kIp = 14;  // behind Ethernet II
constexpr std::size_t kMostAdded = 64;

std::minstd_rand random_source;

std::size_t below(std::size_t n) {
  return n == 0 ? 0 : random_source() % n;
}
bool one_in(std::size_t n) {
  return below(n) == 0;
}
std::uint8_t one_of(std::initializer_list<std::uint8_t> values) {
  return values.begin()[below(values.size())];
}

std::size_t be16(const Text& t, std::size_t at) {
  return at + 1 < t.size() ? t[at] * 256U + t[at + 1] : 0;
}
void put_be16(Text& t, std::size_t at, std::size_t v) {
  if (at + 1 >= t.size()) return;
  t[at] = static_cast<std::uint8_t>(v >> 8);
  t[at + 1] = static_cast<std::uint8_t>(v);
}
std::size_t le16(const Text& t, std::size_t at) {
  return at + 1 < t.size() ? t[at + 1] * 256U + t[at] : 0;
}
void put_le16(Text& t, std::size_t at, std::size_t v) {
  put_be16(t, at, (v & 0xFF) << 8 | (v >> 8 & 0xFF));
}

Text part(const Text& t, std::size_t first, std::size_t count) {
  first = std::min(first, t.size());
  count = std::min(count, t.size() - first);
  const auto begin = t.begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}
void append(Text& t, const Text& more) {
  t.insert(t.end(), more.begin(), more.end());
}
void replace(Text& t, std::size_t first, std::size_t count, const Text& by) {
  Text result = part(t, 0, first);
  append(result, by);
  append(result, part(t, first + count, t.size()));
  t = std::move(result);
}

// libFuzzer's own mutation of `count` bytes, which may then be more or less.
std::size_t mutate(Text& t, std::size_t first, std::size_t count) {
  Text piece = part(t, first, count);
  const std::size_t before = piece.size();
  piece.resize(before + kMostAdded);
  piece.resize(LLVMFuzzerMutate(piece.data(), before, piece.size()));
  replace(t, first, before, piece);
  return piece.size();
}
// The same, but their number stays.
void mutate_in_place(Text& t, std::size_t first, std::size_t count) {
  Text piece = part(t, first, count);
  if (piece.empty()) return;
  const std::size_t size = piece.size();
  LLVMFuzzerMutate(piece.data(), size, size);
  std::copy(piece.begin(), piece.end(), t.begin() + static_cast<std::ptrdiff_t>(first));
}

// ---- SMB ----

constexpr std::size_t kSmbHeader = 32;
constexpr std::initializer_list<std::uint8_t> kAndX = {0x24, 0x2D, 0x2E, 0x2F, 0x73, 0x74, 0x75, 0xA2};
constexpr std::initializer_list<std::uint8_t> kCommands = {
    0x00, 0x01, 0x02, 0x04, 0x05, 0x06, 0x07, 0x08, 0x0A, 0x0B, 0x10, 0x12, 0x1A, 0x1D, 0x23, 0x24, 0x25,
    0x27, 0x2B, 0x2D, 0x2E, 0x2F, 0x32, 0x34, 0x71, 0x72, 0x73, 0x74, 0x75, 0xA0, 0xA2, 0xA4, 0xD0};

bool is_andx(std::uint8_t command) {
  return std::find(kAndX.begin(), kAndX.end(), command) != kAndX.end();
}

void mutate_smb(Text& m) {
  if (m.size() < kSmbHeader + 3) m.resize(kSmbHeader + 3);
  // The last block of the chain.
  std::size_t block = kSmbHeader;
  std::uint8_t command = m[4];
  for (int i = 0; i < 4 && is_andx(command) && block + 5 <= m.size() && m[block + 1] != 0xFF; ++i) {
    const std::size_t next = le16(m, block + 3);
    if (next <= block || next + 3 > m.size()) break;
    command = m[block + 1];
    block = next;
  }
  const std::size_t bytes = block + 1 + m[block] * std::size_t{2};  // where the byte count stands

  switch (below(8)) {
    case 0: m[4] = one_of(kCommands); break;
    case 1: m[9] ^= 0x80; break;
    case 2:
      m[10] = one_of({0, 1});
      m[11] = one_of({0, 0x40, 0x80, 0xC0});
      break;
    case 3: std::fill_n(m.begin() + 5, 4, std::uint8_t{0}); break;
    case 4: mutate_in_place(m, block + 1, m[block] * std::size_t{2}); break;
    case 5: {
      if (bytes + 2 > m.size()) m.resize(bytes + 2);
      put_le16(m, bytes, mutate(m, bytes + 2, m.size()));
      break;
    }
    case 6: {  // other words
      const auto words = static_cast<std::uint8_t>(below(24));
      Text fresh(1 + std::size_t{words} * 2);
      fresh[0] = words;
      if (words != 0) mutate_in_place(fresh, 1, fresh.size() - 1);
      replace(m, block, 1 + m[block] * std::size_t{2}, fresh);
      break;
    }
    default: {  // another block
      if (m[block] < 2) break;
      m[block + 1] = one_of(kAndX);
      put_le16(m, block + 3, m.size());
      append(m, part(m, kSmbHeader, 3 + below(60)));
      break;
    }
  }
}

// ---- DNS and the NetBIOS name service ----

std::size_t name_length(const Text& m, std::size_t at) {
  std::size_t length = 0;
  while (at + length < m.size()) {
    const std::uint8_t b = m[at + length];
    if (b == 0) return length + 1;
    if (b >= 0x80) return length + 2;
    length += b + 1U;
  }
  return length;
}

void mutate_names(Text& m) {
  constexpr std::size_t kHeader = 12;
  if (m.size() < kHeader + 6) m.resize(kHeader + 6);
  struct Record {
    std::size_t at, name, size;
    std::size_t count_at;  // of its section
  };
  std::vector<Record> records;
  std::size_t at = kHeader;
  for (std::size_t count_at = 4; count_at <= 10; count_at += 2) {
    for (std::size_t i = 0; i < be16(m, count_at) && at < m.size() && records.size() < 64; ++i) {
      const std::size_t name = name_length(m, at);
      const std::size_t size = count_at == 4 ? name + 4 : name + 10 + be16(m, at + name + 8);
      records.push_back({at, name, size, count_at});
      at += size;
    }
  }
  if (records.empty() || one_in(8)) return mutate_in_place(m, 0, kHeader);

  const Record r = records[below(records.size())];
  switch (below(6)) {
    case 0: mutate_in_place(m, r.at, r.name); break;
    case 1: put_be16(m, r.at + r.name, one_of({1, 2, 5, 6, 10, 12, 15, 16, 28, 32, 33, 255})); break;
    case 2: replace(m, r.at, r.name, {0xC0, static_cast<std::uint8_t>(below(m.size()))}); break;
    case 3: {  // once more
      const Text again = part(m, r.at, r.size);
      replace(m, r.at, 0, again);
      put_be16(m, r.count_at, be16(m, r.count_at) + 1);
      break;
    }
    case 4: replace(m, r.at, r.name, part(m, kHeader, name_length(m, kHeader))); break;
    default:
      if (r.count_at == 4) break;
      put_be16(m, r.at + r.name + 8, mutate(m, r.at + r.name + 10, r.size - r.name - 10));
      break;
  }
}

// ---- SNMP ----

struct Element {
  std::uint8_t tag = 0;
  Text value;                    // of one that is not constructed
  std::vector<Element> content;  // of one that is
  std::uint8_t length_form = 0;  // 0: as short as it goes, else so many bytes of length
};

constexpr std::uint8_t kConstructed = 0x20;

std::vector<Element> elements_of(const Text& t, int depth) {
  std::vector<Element> elements;
  for (std::size_t at = 0; at + 2 <= t.size();) {
    Element e;
    e.tag = t[at];
    std::size_t length = t[at + 1];
    std::size_t header = 2;
    if (length > 0x80) {
      const std::size_t count = length & 3;
      length = 0;
      for (std::size_t i = 0; i < count && at + 2 + i < t.size(); ++i) length = length << 8 | t[at + 2 + i];
      header += count;
    }
    const Text value = part(t, at + header, length);
    if ((e.tag & kConstructed) != 0 && depth < 8) {
      e.content = elements_of(value, depth + 1);
    } else {
      e.value = value;
    }
    elements.push_back(std::move(e));
    at += header + length;
  }
  return elements;
}

Text bytes_of(const std::vector<Element>& elements) {
  Text bytes;
  for (const Element& e : elements) {
    const Text value = e.content.empty() ? e.value : bytes_of(e.content);
    bytes.push_back(e.tag);
    std::uint8_t form = e.length_form;
    if (form == 0 && value.size() >= 0x80) form = 2;
    if (form == 0) {
      bytes.push_back(static_cast<std::uint8_t>(value.size()));
    } else {
      bytes.push_back(0x80 | form);
      for (int i = form - 1; i >= 0; --i)
        bytes.push_back(i > 3 ? 0 : static_cast<std::uint8_t>(value.size() >> (8 * i)));
    }
    append(bytes, value);
  }
  return bytes;
}

void mutate_elements(std::vector<Element>& elements) {
  if (elements.empty()) return;
  const std::size_t i = below(elements.size());
  Element& e = elements[i];
  if (!e.content.empty() && !one_in(4)) return mutate_elements(e.content);
  switch (below(5)) {
    case 0: e.tag = one_of({0x02, 0x04, 0x05, 0x06, 0x30, 0x40, 0x41, 0x42, 0x43, 0xA0, 0xA2, 0xA4}); break;
    case 1: e.length_form = static_cast<std::uint8_t>(below(6)); break;
    case 2: {
      const Element again = e;
      elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(i), again);
      break;
    }
    default:
      if (e.content.empty()) mutate(e.value, 0, e.value.size());
      break;
  }
}

void mutate_snmp(Text& m) {
  auto elements = elements_of(m, 0);
  mutate_elements(elements);
  m = bytes_of(elements);
}

// ---- DHCP ----

void mutate_dhcp(Text& m) {
  constexpr std::size_t kOptions = 240;
  if (m.size() < kOptions + 4 || one_in(8)) return mutate_in_place(m, 0, kOptions);
  std::vector<std::size_t> options;
  for (std::size_t at = kOptions; at + 1 < m.size() && m[at] != 0 && m[at] != 255; at += m[at + 1] + 2U) {
    options.push_back(at);
  }
  options.push_back(options.empty() ? kOptions : options.back() + m[options.back() + 1] + 2);
  const std::size_t at = std::min(options[below(options.size())], m.size() - 2);
  const std::size_t size = m[at + 1] + std::size_t{2};
  switch (below(4)) {
    case 0: m[at] = static_cast<std::uint8_t>(below(256)); break;
    case 1: m[at + 1] = static_cast<std::uint8_t>(mutate(m, at + 2, size - 2)); break;
    case 2: replace(m, at, 0, part(m, at, size)); break;
    default: replace(m, at, 0, {static_cast<std::uint8_t>(below(90)), 4, 192, 0, 2, 1}); break;
  }
}

// ---- NCP ----

void mutate_ncp(Text& m) {
  if (m.size() < 10) m.resize(10);
  switch (below(4)) {
    case 0: put_be16(m, 0, one_of({0x11, 0x22, 0x33, 0x55, 0x77, 0x99}) * 0x101U); break;
    case 1: m[6] = static_cast<std::uint8_t>(below(256)); break;
    case 2: m[one_in(2) ? 7 : 9] = static_cast<std::uint8_t>(below(256)); break;
    default: mutate(m, 2, m.size()); break;
  }
}

// ---- The way to a message, and back ----

struct Place {
  std::size_t at = 0;  // of the message; 0: none that is known
  void (*change)(Text&) = nullptr;
};

Place place_of(const Text& f) {
  if (f.size() > 44 && be16(f, 12) == 0x8137 && f[19] == 17) return {44, mutate_ncp};
  if (f.size() < 42 || be16(f, 12) != 0x0800) return {};
  const std::size_t transport = kIp + (f[kIp] & 15U) * 4;
  const std::size_t source = be16(f, transport);
  const std::size_t destination = be16(f, transport + 2);
  const auto either = [&](std::size_t port) { return source == port || destination == port; };
  if (f[23] == 6 && either(139) && transport + 13 < f.size()) {
    return {transport + (f[transport + 12] >> 4) * 4U + 4, mutate_smb};
  }
  if (f[23] != 17) return {};
  const std::size_t message = transport + 8;
  if (destination == 67 || destination == 68) return {message, mutate_dhcp};
  if (either(137) || either(53)) return {message, mutate_names};
  if (either(161)) return {message, mutate_snmp};
  return {};
}

std::size_t sum_of(const Text& t, std::size_t first, std::size_t size, std::size_t sum = 0) {
  for (std::size_t i = 0; i < size && first + i < t.size(); ++i) sum += i % 2 == 0 ? t[first + i] * 256U : t[first + i];
  while (sum > 0xFFFF) sum = (sum & 0xFFFF) + (sum >> 16);
  return sum;
}

void mend(Text& f, std::size_t message) {
  if (be16(f, 12) == 0x8137) return put_be16(f, 16, f.size() - kIp);
  const std::size_t header = (f[kIp] & 15U) * 4;
  const std::size_t transport = kIp + header;
  const std::size_t length = f.size() - transport;
  put_be16(f, kIp + 2, f.size() - kIp);
  put_be16(f, kIp + 10, 0);
  put_be16(f, kIp + 10, ~sum_of(f, kIp, header));

  const bool tcp = f[23] == 6;
  if (tcp) put_be16(f, message - 2, f.size() - message);
  if (!tcp) put_be16(f, transport + 4, length);
  const std::size_t checksum = transport + (tcp ? 16 : 6);
  put_be16(f, checksum, 0);
  put_be16(f, checksum, ~sum_of(f, transport, length, sum_of(f, kIp + 12, 8) + f[23] + length));
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
  random_source.seed(seed);
  Text frame(data, data + size);
  const Place place = place_of(frame);
  if (place.change == nullptr || place.at >= size || one_in(16)) return LLVMFuzzerMutate(data, size, most);

  Text message = part(frame, place.at, size);
  for (std::size_t n = 1 + below(3); n != 0; --n) place.change(message);
  frame.resize(place.at);
  append(frame, message);
  if (frame.size() > most) frame.resize(most);
  mend(frame, place.at);
  std::copy(frame.begin(), frame.end(), data);
  return frame.size();
}
