#include "pages.hpp"

#include <wirelines.h>

#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "host/decode.hpp"
#include "host/json_text.hpp"
#include "host/packet.hpp"
#include "host/rows.hpp"
#include "host/summary.hpp"
#include "host/text.hpp"

namespace wirelines::host {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::string_view, 6> kCharsets = {"ascii", "sjis", "jis", "utf16", "euc", "ebcdic"};
constexpr std::uint32_t kNoByte = 0xFFFFFFFF;

struct Column {
  const char *key, *title, *align;
  int width;  // in characters; 0 for what is left
};
constexpr std::array<Column, 7> kColumns = {{{"no", "No.", "right", 7},
                                             {"time", "Time", "left", 15},
                                             {"src", "Source", "left", 17},
                                             {"dst", "Destination", "left", 17},
                                             {"protocol", "Protocol", "left", 9},
                                             {"length", "Length", "right", 6},
                                             {"note", "Note", "left", 0}}};

// Written as it stands: printable UTF-8.
void put_string(Output& out, std::string_view utf8) {
  out.append('"');
  for (const char c : utf8) {
    if (c == '"' || c == '\\') out.append('\\');
    out.append(c);
  }
  out.append('"');
}

void pair(Output& out, std::string_view key_in_quotes, std::uint64_t value) {
  out.append(',');
  out.append(key_in_quotes);
  out.append(':');
  out.number(value);
}

std::string_view udp_or_tcp_family(const Packet& packet, bool tcp) {
  const auto is = [&](std::uint16_t port) { return packet.summary.srcPort == port || packet.summary.dstPort == port; };
  if (is(53) || is(5353) || is(5355)) return "dns";
  if (is(67) || is(68) || is(546) || is(547)) return "dhcp";
  if (is(445)) return "smb";
  if (is(137) || is(138) || is(139)) return "netbios";
  if (!tcp && (is(161) || is(162))) return "snmp";
  if (is(524)) return "ncp";
  return tcp ? "tcp" : "udp";
}

std::string_view ipx_family(const PacketSummary& summary) {
  constexpr std::uint8_t kSpx = 5;
  constexpr std::uint8_t kNcp = 17;
  constexpr std::uint8_t kNetBios = 20;
  if (summary.ipProtocol == kSpx) return "spx";
  if (summary.ipProtocol == kNcp) return "ncp";
  return summary.ipProtocol == kNetBios ? "netbios" : "ipx";
}

// What a row's colour goes by.
std::string_view family(const Packet& packet) {
  const auto& summary = packet.summary;
  switch (summary.networkCode) {
    case WIRELINES_NET_IP:
    case WIRELINES_NET_IP_FRAGMENT:
    case WIRELINES_NET_IP6:
      switch (summary.ipProtocol) {
        case 6: return udp_or_tcp_family(packet, true);
        case 17: return udp_or_tcp_family(packet, false);
        case 1:
        case 2:
        case 58: return "icmp";
        default: return packet.is_ip6 ? "ipv6" : "ip";
      }
    case WIRELINES_NET_ARP:
    case WIRELINES_NET_RARP: return "arp";
    case WIRELINES_NET_IPX: return ipx_family(summary);
    case WIRELINES_NET_NETBIOS: return "netbios";
    case WIRELINES_NET_PPPOE:
    case WIRELINES_NET_LCP:
    case WIRELINES_NET_CHAP:
    case WIRELINES_NET_PAP:
    case WIRELINES_NET_IPCP: return "ppp";
    default: return summary.frameKind == WIRELINES_LLC || summary.frameKind == WIRELINES_LLC_S_U ? "llc" : "other";
  }
}

void put_line(Output& out, Text& text, const DisplayLine& line) {
  std::string shown;
  text.append(shown, line.text);
  out.append("{\"t\":");
  put_string(out, shown);
  pair(out, "\"p\"", line.protocolCode);
  pair(out, "\"l\"", line.level);
  const auto start = line.startOffset;
  const auto end = line.endOffset;
  if (start != end || (start != 0 && start != kNoByte)) {
    pair(out, "\"s\"", start);
    pair(out, "\"e\"", end);
  }
  out.append(",\"y\":[");
  out.number(line.styleIndex);
  out.append(',');
  out.number(line.styleGroup);
  out.append("]}");
}

// Of each hex line the last bytes are the text, as many as the line has bytes of the frame: [offset,width,"text"].
void put_cells(Output& out, Text& text, const Frame& frame, std::uint32_t charset) {
  constexpr std::uint32_t kPerLine = 16;
  Lines lines;
  lines.dump(frame, charset);
  std::uint32_t offset = 0;
  std::string shown;
  lines.each([&](const DisplayLine& line) {
    const std::string_view all = line.text;
    auto left = all.substr(all.size() - std::min(kPerLine, frame.length - offset));
    while (!left.empty()) {
      const auto byte = static_cast<unsigned char>(left[0]);
      const bool two = left.size() > 1 && (byte >= 0xE0 || (byte >= 0x80 && byte < 0xA0));
      const auto width = two ? 2U : 1U;
      shown.clear();
      text.append(shown, left.substr(0, width));
      out.append(offset == 0 ? "[" : ",[");
      out.number(offset);
      out.append(two ? ",2," : ",1,");
      put_string(out, shown);
      out.append(']');
      left.remove_prefix(width);
      offset += width;
    }
  });
}

}  // namespace

std::uint32_t charset_of(std::string_view name) {
  for (std::uint32_t mode = 0; mode < kCharsets.size(); mode++) {
    if (kCharsets[mode] == name) return mode;
  }
  throw Failure(EX_USAGE, "there is no character set " + in_quotes(name));
}

std::string state_json(const FrameStore& store, const ViewSettings& settings) {
  const auto state = store.state();
  Json json = {{"version", 1},
               {"files", {store.name() == "-" ? "standard input" : store.name()}},
               {"frames", state.frames},
               {"bytes", state.bytes},
               {"size", nullptr},
               {"complete", state.complete},
               {"live", state.live},
               {"paused", state.paused},
               {"dropped", state.dropped},
               {"damage", nullptr},
               {"first", std::to_string(state.first)},
               {"last", std::to_string(state.last)},
               {"charsets", kCharsets},
               {"charset", kCharsets[settings.charset]},
               {"columns", Json::array()}};
  if (state.size) json["size"] = *state.size;
  if (!state.damage.empty()) json["damage"] = state.damage;
  const std::time_t first = state.first / 1000000000;
  std::tm local{};
  localtime_r(&first, &local);
  json["utcOffset"] = local.tm_gmtoff;
  for (const auto& column : kColumns) {
    json["columns"].push_back(
        {{"key", column.key}, {"title", column.title}, {"align", column.align}, {"width", column.width}});
  }
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void rows_json(Output& out, const FrameStore& store, const ViewSettings& settings,
               const std::vector<std::uint64_t>& numbers) {
  FrameStore::Reader reader(store);
  Lift lift(settings.lift_tags);
  Output text;
  RowPrinter printer(text, false, settings.lift_tags);
  out.append("\"rows\":[");
  for (const auto number : numbers) {
    const auto* const frame = reader.at(number);
    if (frame == nullptr) break;
    lift.take(*frame);
    const Packet packet(*frame, lift);
    text.clear();
    printer.cells(*frame);
    out.append(number == numbers[0] ? "{\"n\":" : ",{\"n\":");
    out.number(frame->number);
    out.append(",\"c\":[");
    auto cells = text.text();
    cells.remove_suffix(1);  // the line's end
    for (bool more = true; more;) {
      const auto end = cells.find('\t');
      more = end != std::string_view::npos;
      put_string(out, cells.substr(0, end));
      if (more) {
        out.append(',');
        cells.remove_prefix(end + 1);
      }
    }
    out.append(R"(],"k":")");
    out.append(family(packet));
    out.append(wrong_checksums(*frame, lift, packet.summary) != 0 ? R"(","bad":true})" : R"(","bad":false})");
  }
  out.append(']');
}

void frame_json(Output& out, const Frame& frame, const ViewSettings& settings, std::uint32_t charset) {
  Text text;
  Lines lines(settings.lift_tags);
  const auto top = lines.decode(frame, charset);
  out.append("{\"n\":");
  out.number(frame.number);
  out.append(R"(,"time":")");
  out.number(static_cast<std::uint64_t>(time_of(frame)));
  out.append('"');
  pair(out, "\"length\"", frame.length);
  pair(out, "\"originalLength\"", frame.original_length);
  pair(out, "\"top\"", top);
  out.append(",\"lines\":[");
  bool first = true;
  lines.each([&](const DisplayLine& line) {
    if (!std::exchange(first, false)) out.append(',');
    put_line(out, text, line);
  });
  out.append(R"(],"bytes":")");
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (std::uint32_t i = 0; i < frame.length; i++) {
    out.append(kDigits[frame.data[i] >> 4]);
    out.append(kDigits[frame.data[i] & 0x0F]);
  }
  out.append(R"(","cells":[)");
  put_cells(out, text, frame, charset);
  out.append("]}");
}

}  // namespace wirelines::host
