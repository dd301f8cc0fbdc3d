// The report for programs.
#include <array>
#include <ctime>
#include <nlohmann/json.hpp>

#include "labels.hpp"
#include "report.hpp"
#include "text.hpp"

namespace wirelines::host {

namespace {

using Json = nlohmann::ordered_json;

class JsonReport {
 public:
  explicit JsonReport(std::size_t top) : top_(top) {}

  Json all(const Tally& tally) {
    Json json = count(tally.total);
    json["cut"] = {{"frames", tally.cut.frames}, {"missing_bytes", tally.cut.bytes}};
    if (tally.total.frames > 0) {
      json["start"] = utc(tally.first_time);
      json["end"] = utc(tally.last_time);
      json["seconds"] = static_cast<double>(tally.last_time - tally.first_time) / 1e9;
      json["shortest"] = tally.shortest;
      json["longest"] = tally.longest;
    }
    json["protocols"] = Json::array();
    std::vector<std::string> path;
    for (const auto& part : protocol_tree(tally).parts) protocol(part, path, json["protocols"]);
    json["stations"] = talkers(tally.stations);
    json["ipv4"] = talkers(tally.ip);
    json["ipv6"] = talkers(tally.ip6);
    json["ipx"] = talkers(tally.ipx);
    json["station_conversations"] = conversations(tally.stations);
    json["ipv4_conversations"] = conversations(tally.ip);
    json["ipv6_conversations"] = conversations(tally.ip6);
    json["ipx_conversations"] = conversations(tally.ipx);
    json["ports"] = ports(tally);
    json["sizes"] = Json::array();
    for (std::size_t row = 0; row < tally.sizes.size(); row++) {
      Json size = {{"from", row == 0 ? 0 : kSizeLimits[row - 1]}};
      if (row < kSizeLimits.size()) size["to"] = kSizeLimits[row] - 1;
      size.update(count(tally.sizes[row]));
      json["sizes"].push_back(size);
    }
    json["checksums"] = checksums(tally);
    json["framings"] = framings(tally.framings);
    json["timeline"] = timeline(tally.timeline);
    return json;
  }

 private:
  static Json count(const Count& count) { return {{"frames", count.frames}, {"bytes", count.bytes}}; }

  static std::string utc(std::uint64_t time) {
    const auto seconds = static_cast<std::time_t>(time / 1'000'000'000);
    std::tm broken_down{};
    std::array<char, 32> text{};
    gmtime_r(&seconds, &broken_down);
    const auto size = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &broken_down);
    const auto fraction = std::to_string(time % 1'000'000'000);
    return std::string(text.data(), size) + "." + std::string(9 - fraction.size(), '0') + fraction + "Z";
  }

  // Names become UTF-8: what JSON could not hold never comes to it.
  std::string utf8(const std::string& bytes) {
    std::string text;
    text_.append(text, bytes);
    return text;
  }

  Json labelled(const Label& label) {
    Json json = {{"address", label.address}};
    if (!label.name.empty()) json["name"] = utf8(label.name);
    return json;
  }

  void protocol(const Protocol& part, std::vector<std::string>& path, Json& rows) {
    path.push_back(utf8(part.name));
    Json row = {{"path", path}};
    row.update(count(part.count));
    rows.push_back(row);
    for (const auto& inner : part.parts) protocol(inner, path, rows);
    path.pop_back();
  }

  static Json framings(const std::array<Count, kFramings>& counts) {
    Json json = Json::object();
    for (std::size_t i = 0; i < counts.size(); i++) {
      if (counts[i].frames > 0) json[kFramingNames[i]] = count(counts[i]);
    }
    return json;
  }

  template <std::size_t N, typename T>
  Json talkers(const Layer<N, T>& layer) {
    Json rows = Json::array();
    for (const auto& entry : top_entries(layer.talkers, top_, [](const auto& value) { return value.both(); })) {
      Json row = labelled(label(entry.key));
      row["sent"] = count(entry.value.sent);
      row["received"] = count(entry.value.received);
      if constexpr (std::is_same_v<T, Station>) row["framings"] = framings(entry.value.framings);
      rows.push_back(row);
    }
    return {{"total", count(layer.total)},
            {"entries", layer.talkers.entries().size()},
            {"not_entered",
             {{"sent", count(layer.talkers_missed.sent)}, {"received", count(layer.talkers_missed.received)}}},
            {"rows", rows}};
  }

  template <std::size_t N, typename T>
  Json conversations(const Layer<N, T>& layer) {
    Json rows = Json::array();
    for (const auto& entry : top_entries(layer.conversations, top_, [](const auto& value) { return value.both(); })) {
      Key<N> a;
      Key<N> b;
      std::copy_n(entry.key.begin(), N, a.begin());
      std::copy_n(entry.key.begin() + N, N, b.begin());
      rows.push_back({{"a", labelled(label(a))},
                      {"b", labelled(label(b))},
                      {"a_to_b", count(entry.value.forth)},
                      {"b_to_a", count(entry.value.back)}});
    }
    return {{"total", count(layer.total)},
            {"entries", layer.conversations.entries().size()},
            {"not_entered", count(layer.conversations_missed)},
            {"rows", rows}};
  }

  Json ports(const Tally& tally) {
    Json rows = Json::array();
    for (const auto& entry : top_entries(tally.ports, top_, [](const Count& count) { return count; })) {
      const auto name = label(entry.key).name;
      const auto kind = static_cast<PortKind>(entry.key[0]);
      Json row = {{"protocol", kind == PortKind::kTcp   ? "tcp"
                               : kind == PortKind::kUdp ? "udp"
                                                        : "ipx"},
                  {"port", entry.key[1] << 8 | entry.key[2]}};
      if (!name.empty()) row["name"] = utf8(name);
      row.update(count(entry.value));
      rows.push_back(row);
    }
    return {{"entries", tally.ports.entries().size()}, {"not_entered", count(tally.ports_missed)}, {"rows", rows}};
  }

  static Json checksums(const Tally& tally) {
    Json json = Json::object();
    constexpr std::array<const char*, kChecksums> kKeys = {"ipv4", "icmp", "tcp", "udp"};
    for (std::size_t i = 0; i < kKeys.size(); i++) {
      const auto& verdicts = tally.checksums[i];
      json[kKeys[i]] = {{"right", verdicts.right},
                        {"wrong", verdicts.wrong},
                        {"none", verdicts.none},
                        {"not_verified", verdicts.not_verified}};
    }
    return json;
  }

  static Json timeline(const Timeline& timeline) {
    constexpr std::size_t kMostColumns = 1000;
    const auto columns = timeline.columns(kMostColumns);
    Json frames = Json::array();
    Json bytes = Json::array();
    for (const auto& column : columns.counts) {
      frames.push_back(column.frames);
      bytes.push_back(column.bytes);
    }
    return {{"start", utc(columns.start)},
            {"seconds", static_cast<double>(columns.width) / 1e9},
            {"frames", frames},
            {"bytes", bytes}};
  }

  std::size_t top_;
  Text text_;
};

}  // namespace

void write_json(Output& out, const Tally& tally, std::size_t top) {
  // A number or a piece of ASCII is all that is left to go wrong in the tables; nothing is thrown for a bad byte.
  out.append(JsonReport(top).all(tally).dump(2, ' ', false, Json::error_handler_t::replace));
  out.append('\n');
}

}  // namespace wirelines::host
