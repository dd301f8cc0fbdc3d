// The report for people: 100 columns, the summary first.
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <string_view>
#include <utility>

#include "labels.hpp"
#include "report.hpp"
#include "text.hpp"

namespace wirelines::host {

namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kBarWidth = 40;
constexpr std::size_t kChartWidth = 80;
constexpr std::size_t kChartHeight = 5;
constexpr std::uint64_t kSecond = 1'000'000'000;
constexpr std::size_t kDate = sizeof "2024-05-01";  // with the blank behind it
constexpr std::size_t kDateAndTime = sizeof "2024-05-01 10:01:01" - 1;

constexpr std::string_view kPlain = "\x1B[0m";
constexpr std::string_view kTitleColor = "\x1B[1;38;5;32m";
constexpr std::string_view kHeadColor = "\x1B[38;5;30m";
constexpr std::string_view kBadColor = "\x1B[1;38;5;160m";

// From nearly nothing to a full cell.
constexpr std::array<const char*, 8> kLeftBlocks = {"▏", "▎", "▍", "▌", "▋", "▊", "▉", "█"};
constexpr std::array<const char*, 8> kLowerBlocks = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};

std::string fixed(double value, int decimals) {
  std::array<char, 64> text{};
  const auto size = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return {text.data(), static_cast<std::size_t>(size)};
}

// "1.2 M" of what stands behind.
std::string scaled(double value) {
  constexpr std::array<const char*, 6> kPrefixes = {"", "k", "M", "G", "T", "P"};
  std::size_t i = 0;
  for (; value >= 999.95 && i + 1 < kPrefixes.size(); i++) value /= 1000;
  return fixed(value, i == 0 && value == static_cast<double>(static_cast<std::uint64_t>(value)) ? 0 : 1) + " " +
         kPrefixes[i];
}

std::string share(std::uint64_t part, std::uint64_t whole) {
  if (whole == 0) return "-";
  return fixed(100.0 * static_cast<double>(part) / static_cast<double>(whole), 1) + "%";
}

std::string seconds(std::uint64_t nanoseconds) {
  const auto whole = nanoseconds / 1'000'000'000;
  if (whole >= 86400) return std::to_string(whole / 86400) + " d " + std::to_string(whole % 86400 / 3600) + " h";
  if (whole >= 3600) return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
  if (whole >= 60) return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
  if (whole >= 1) return fixed(static_cast<double>(nanoseconds) / 1e9, 3) + " s";
  if (nanoseconds >= 1'000'000) return fixed(static_cast<double>(nanoseconds) / 1e6, 3) + " ms";
  return std::to_string(nanoseconds / 1000) + " us";
}

// A width of columns: one that is round in its unit.
std::string round_time(std::uint64_t nanoseconds) {
  struct Unit {
    std::uint64_t size;
    const char* name;
  };
  constexpr std::array<Unit, 6> kUnits = {{{86400'000'000'000, " d"},
                                           {3600'000'000'000, " h"},
                                           {60'000'000'000, " min"},
                                           {1'000'000'000, " s"},
                                           {1'000'000, " ms"},
                                           {1'000, " us"}}};
  for (const auto& unit : kUnits) {
    if (nanoseconds % unit.size == 0) return std::to_string(nanoseconds / unit.size) + unit.name;
  }
  return std::to_string(nanoseconds) + " ns";
}

std::string local_time(std::uint64_t time, const char* format) {
  const auto seconds = static_cast<std::time_t>(time / 1'000'000'000);
  std::tm broken_down{};
  std::array<char, 64> text{};
  localtime_r(&seconds, &broken_down);
  const auto size = std::strftime(text.data(), text.size(), format, &broken_down);
  const auto micro = std::to_string(time % 1'000'000'000 / 1000);
  return std::string(text.data(), size) + "." + std::string(6 - micro.size(), '0') + micro;
}

// Columns as wide as their widest cell. In code page 932 a text has as many bytes as columns.
struct Table {
  struct Column {
    std::string_view head;
    bool right = true;
    std::size_t goes = 0;  // when the table would be too wide: columns of 1 are left out first, then those of 2
  };
  std::vector<Column> columns;
  std::vector<std::vector<std::string>> rows;
  std::vector<std::string> bars;  // behind the rows; UTF-8
};

class Report {
 public:
  Report(Output& out, const Tally& tally, const TextReport& options) : out_(out), tally_(tally), options_(options) {}

  void all() {
    summary();
    protocols();
    talkers("Stations", tally_.stations);
    talkers("IPv4 addresses", tally_.ip);
    talkers("IPv6 addresses", tally_.ip6);
    talkers("IPX addresses", tally_.ipx);
    conversations("Station conversations", tally_.stations);
    conversations("IPv4 conversations", tally_.ip);
    conversations("IPv6 conversations", tally_.ip6);
    conversations("IPX conversations", tally_.ipx);
    ports();
    sizes();
    checksums();
    framings();
    chart();
  }

 private:
  void colored(std::string_view color, std::string_view text) {
    if (options_.color) out_.append(color);
    text_.append(out_, text);
    if (options_.color) out_.append(kPlain);
  }

  void title(std::string_view text, const std::string& remark = "") {
    out_.append('\n');
    colored(kTitleColor, text);
    if (!remark.empty()) out_.append("  (" + remark + ")");
    out_.append('\n');
  }

  void fact(std::string_view name, const std::string& value, bool bad = false) {
    constexpr std::size_t kNameWidth = 11;
    colored(kHeadColor, name);
    out_.blanks(kNameWidth - name.size());
    bad ? colored(kBadColor, value) : out_.append(value);
    out_.append('\n');
  }

  void summary() {
    const auto& total = tally_.total;
    const auto duration = tally_.last_time - tally_.first_time;
    const auto per_second = [duration](std::uint64_t value) {
      return scaled(static_cast<double>(value) * 1e9 / static_cast<double>(duration));
    };
    fact("Frames", std::to_string(total.frames) +
                       (tally_.cut.frames == 0 ? "" : ", " + std::to_string(tally_.cut.frames) + " cut at capture"));
    fact("Bytes",
         std::to_string(total.bytes) + " on the wire" +
             (tally_.cut.frames == 0 ? "" : ", " + std::to_string(tally_.cut.bytes) + " of them not captured"));
    const auto start = local_time(tally_.first_time, "%Y-%m-%d %H:%M:%S");
    const auto end = local_time(tally_.last_time, "%Y-%m-%d %H:%M:%S");
    const bool same_day = start.compare(0, kDate, end, 0, kDate) == 0;
    fact("Time", start + " to " + (same_day ? end.substr(kDate) : end));
    fact("Duration", seconds(duration));
    if (duration > 0) fact("Rate", per_second(total.frames) + "frames/s, " + per_second(total.bytes * 8) + "bit/s");
    fact("Length", "average " + fixed(static_cast<double>(total.bytes) / static_cast<double>(total.frames), 1) +
                       ", shortest " + std::to_string(tally_.shortest) + ", longest " + std::to_string(tally_.longest));
    checksum_fact();
  }

  void checksum_fact() {
    std::string wrong;
    std::uint64_t not_verified = 0;
    for (std::size_t i = 0; i < kChecksums; i++) {
      const auto& verdicts = tally_.checksums[i];
      not_verified += verdicts.not_verified;
      if (verdicts.wrong == 0) continue;
      wrong += (wrong.empty() ? "" : ", ") + std::to_string(verdicts.wrong) + " of " + kChecksumNames[i];
    }
    const auto rest = not_verified == 0 ? "" : "; " + std::to_string(not_verified) + " not verified";
    fact("Checksums", wrong.empty() ? "none wrong" + rest : wrong + " wrong" + rest, !wrong.empty());
  }

  void protocols() {
    title("Protocols");
    Table table{{{"", false}, {"frames"}, {"%"}, {"bytes"}, {"%"}}, {}, {}};
    protocol_rows(protocol_tree(tally_), 0, table);
    print(table);
    missed(tally_.protocols_missed, "frames belong to protocols that the full table could not take");
  }

  void protocol_rows(const Protocol& protocol, std::size_t depth, Table& table) {
    const auto shown = options_.top == 0 ? protocol.parts.size() : std::min(options_.top, protocol.parts.size());
    for (std::size_t i = 0; i < shown; i++) {
      protocol_row(protocol.parts[i].name, protocol.parts[i].count, depth, table);
      protocol_rows(protocol.parts[i], depth + 1, table);
    }
    Count rest;
    for (std::size_t i = shown; i < protocol.parts.size(); i++) rest += protocol.parts[i].count;
    if (rest.frames > 0) {
      protocol_row(std::to_string(protocol.parts.size() - shown) + " more", rest, depth, table);
    }
  }

  void protocol_row(const std::string& name, const Count& count, std::size_t depth, Table& table) const {
    table.rows.push_back({std::string(2 * depth, ' ') + name, std::to_string(count.frames),
                          share(count.frames, tally_.total.frames), std::to_string(count.bytes),
                          share(count.bytes, tally_.total.bytes)});
  }

  // "Stations  (10 of 24, by bytes)"
  static std::string remark(std::size_t shown, std::size_t entries) {
    return shown == entries ? std::to_string(entries) : std::to_string(shown) + " of " + std::to_string(entries);
  }

  template <std::size_t N, typename T>
  void talkers(std::string_view what, const Layer<N, T>& layer) {
    if (layer.total.frames == 0) return;
    const auto entries = top_entries(layer.talkers, options_.top, [](const auto& value) { return value.both(); });
    title(what, remark(entries.size(), layer.talkers.entries().size()));
    Table table{{{"", false}, {"frames"}, {"bytes"}, {"%"}, {"sent"}, {"bytes"}, {"received"}, {"bytes"}}, {}, {}};
    std::vector<std::string> names;
    for (const auto& entry : entries) {
      const auto its_label = label(entry.key);
      const auto both = entry.value.both();
      names.push_back(its_label.name);
      table.rows.push_back({its_label.address, std::to_string(both.frames), std::to_string(both.bytes),
                            share(both.bytes, layer.total.bytes), std::to_string(entry.value.sent.frames),
                            std::to_string(entry.value.sent.bytes), std::to_string(entry.value.received.frames),
                            std::to_string(entry.value.received.bytes)});
    }
    add_names(table, names);
    print(table);
    missed(layer.talkers_missed.sent, "frames sent by addresses that the full table could not take");
    missed(layer.talkers_missed.received, "frames received by addresses that the full table could not take");
  }

  // Behind the first column, if there is any name.
  static void add_names(Table& table, const std::vector<std::string>& names) {
    if (std::all_of(names.begin(), names.end(), [](const auto& name) { return name.empty(); })) return;
    table.columns.insert(table.columns.begin() + 1, {"name", false});
    for (std::size_t i = 0; i < names.size(); i++) table.rows[i].insert(table.rows[i].begin() + 1, names[i]);
  }

  template <std::size_t N, typename T>
  void conversations(std::string_view what, const Layer<N, T>& layer) {
    if (layer.total.frames == 0) return;
    const auto entries = top_entries(layer.conversations, options_.top, [](const auto& value) { return value.both(); });
    title(what, remark(entries.size(), layer.conversations.entries().size()));
    Table table{{{"A", false},
                 {"B", false},
                 {"frames"},
                 {"bytes"},
                 {"%", true, 2},
                 {"A > B", true, 1},
                 {"bytes", true, 1},
                 {"B > A", true, 1},
                 {"bytes", true, 1}},
                {},
                {}};
    for (const auto& entry : entries) {
      Key<N> a;
      Key<N> b;
      std::copy_n(entry.key.begin(), N, a.begin());
      std::copy_n(entry.key.begin() + N, N, b.begin());
      const auto& [forth, back] = entry.value;
      const auto both = entry.value.both();
      table.rows.push_back({label(a).shown(), label(b).shown(), std::to_string(both.frames), std::to_string(both.bytes),
                            share(both.bytes, layer.total.bytes), std::to_string(forth.frames),
                            std::to_string(forth.bytes), std::to_string(back.frames), std::to_string(back.bytes)});
    }
    print(table);
    missed(layer.conversations_missed, "frames between addresses that the full table could not take");
  }

  void ports() {
    const auto entries = top_entries(tally_.ports, options_.top, [](const Count& count) { return count; });
    if (tally_.ports.entries().empty()) return;
    title("Ports of services", remark(entries.size(), tally_.ports.entries().size()));
    Table table{{{"", false}, {"frames"}, {"%"}, {"bytes"}, {"%"}}, {}, {}};
    std::vector<std::string> names;
    for (const auto& entry : entries) {
      const auto its_label = label(entry.key);
      names.push_back(its_label.name);
      protocol_row(its_label.address, entry.value, 0, table);
    }
    add_names(table, names);
    print(table);
    missed(tally_.ports_missed, "frames of ports that the full table could not take");
  }

  void sizes() {
    title("Frame sizes", "bytes, without FCS");
    Table table{{{"", false}, {"frames"}, {"%"}, {"bytes"}, {"%"}}, {}, {}};
    std::uint64_t most = 1;
    for (const auto& count : tally_.sizes) most = std::max(most, count.frames);
    for (std::size_t row = 0; row < tally_.sizes.size(); row++) {
      const auto& count = tally_.sizes[row];
      protocol_row(size_name(row), count, 0, table);
      table.bars.push_back(bar(count.frames, most));
    }
    print(table);
  }

  [[nodiscard]] std::string bar(std::uint64_t value, std::uint64_t most) const {
    std::string text;
    const auto eighths = eighths_of(value, most, kBarWidth);
    for (std::size_t i = 0; i < eighths / 8; i++) text += options_.utf8 ? kLeftBlocks[7] : "#";
    if (eighths % 8 != 0) text += options_.utf8 ? kLeftBlocks[eighths % 8 - 1] : eighths % 8 >= 4 ? "#" : ".";
    return text;
  }

  // How much of `cells` a value fills, in eighths; whatever is there is seen.
  static std::size_t eighths_of(std::uint64_t value, std::uint64_t most, std::size_t cells) {
    if (value == 0) return 0;
    const double part = static_cast<double>(value) / static_cast<double>(most);
    return std::max<std::size_t>(1, static_cast<std::size_t>(std::lround(part * static_cast<double>(cells * 8))));
  }

  void checksums() {
    Table table{{{"", false}, {"right"}, {"wrong"}, {"none"}, {"not verified"}}, {}, {}};
    for (std::size_t i = 0; i < kChecksums; i++) {
      const auto& [right, wrong, none, not_verified] = tally_.checksums[i];
      if (right + wrong + none + not_verified == 0) continue;
      table.rows.push_back({kChecksumNames[i], std::to_string(right), std::to_string(wrong), std::to_string(none),
                            std::to_string(not_verified)});
    }
    if (table.rows.empty()) return;
    title("Checksums", "not verified: frames cut at capture, fragments, too short");
    print(table);
  }

  // One line where nothing but Ethernet II is spoken, as nearly everywhere.
  void framings() {
    title("Framing of the stations", "frames sent");
    std::vector<Framing> used;
    for (const auto framing : {kEthernetII, kRaw8023, kLlc, kSnap, kTooShort, kNoEthernet}) {
      if (tally_.framings[framing].frames > 0) used.push_back(framing);
    }
    if (used.size() == 1) {
      out_.append("  all ");
      out_.append(kFramingNames[used[0]]);
      out_.append('\n');
      return;
    }
    Table table{{{"", false}}, {}, {}};
    for (const auto framing : used) table.columns.push_back({kFramingNames[framing]});
    std::vector<std::string> names;
    for (const auto& entry :
         top_entries(tally_.stations.talkers, options_.top, [](const Station& value) { return value.sent; })) {
      if (entry.value.sent.frames == 0) continue;
      const auto its_label = label(entry.key);
      names.push_back(its_label.name);
      std::vector<std::string> row = {its_label.address};
      for (const auto framing : used) {
        const auto frames = entry.value.framings[framing].frames;
        row.push_back(frames == 0 ? "-" : std::to_string(frames));
      }
      table.rows.push_back(row);
    }
    add_names(table, names);
    std::vector<std::string> all(table.columns.size() - used.size(), "");
    all[0] = "all stations";
    for (const auto framing : used) all.push_back(std::to_string(tally_.framings[framing].frames));
    table.rows.push_back(all);
    print(table);
  }

  // Bytes over time, as high as the busiest column.
  void chart() {
    const auto columns = tally_.timeline.columns(kChartWidth);
    if (columns.counts.size() < 2) return;
    std::uint64_t most = 1;
    for (const auto& count : columns.counts) most = std::max(most, count.bytes);
    const double bits = static_cast<double>(most) * 8e9 / static_cast<double>(columns.width);
    title("Traffic over time", round_time(columns.width) + " a column, the highest " + std::to_string(most) +
                                   " bytes, " + scaled(bits) + "bit/s");
    for (std::size_t row = kChartHeight; row-- > 0;) {
      std::string line = "  ";
      for (const auto& count : columns.counts) {
        const auto eighths = eighths_of(count.bytes, most, kChartHeight);
        line += cell(eighths > row * 8 ? std::min<std::size_t>(8, eighths - row * 8) : 0);
      }
      line.resize(line.find_last_not_of(' ') + 1);
      out_.append(line);
      out_.append('\n');
    }
    const auto end = columns.start + columns.width * columns.counts.size();
    auto from = local_time(columns.start, "%Y-%m-%d %H:%M:%S");
    auto to = local_time(end, "%Y-%m-%d %H:%M:%S");
    for (auto* const text : {&from, &to}) {
      if (columns.width % kSecond == 0) text->resize(kDateAndTime);
      if (end - columns.start < 86400 * kSecond) text->erase(0, kDate);
    }
    out_.append("  " + from);
    const auto ends = from.size() + to.size();
    out_.blanks(columns.counts.size() > ends ? columns.counts.size() - ends : 4);
    out_.append(to + "\n");
  }

  [[nodiscard]] const char* cell(std::size_t eighths) const {
    if (eighths == 0) return " ";
    if (options_.utf8) return kLowerBlocks[eighths - 1];
    return eighths < 3 ? "." : eighths < 6 ? ":" : "#";
  }

  void missed(const Count& count, const char* what) {
    if (count.frames == 0) return;
    out_.append("  ");
    colored(kBadColor, std::to_string(count.frames) + " more " + what + " (" + std::to_string(count.bytes) + " bytes)");
    out_.append('\n');
  }

  void print(const Table& table) {
    std::vector<std::size_t> widths;
    std::array<std::size_t, 3> width{};  // of the columns of each kind
    for (std::size_t i = 0; i < table.columns.size(); i++) {
      const auto& column = table.columns[i];
      widths.push_back(column.head.size());
      for (const auto& row : table.rows) widths[i] = std::max(widths[i], row[i].size());
      width[column.goes] += widths[i] + 2;
    }
    const bool without_1 = width[0] + width[1] + width[2] > kWidth;
    const bool without_2 = width[0] + width[2] > kWidth;
    const auto line = [&](auto cell_of) {
      for (std::size_t i = 0; i < widths.size(); i++) {
        const auto& column = table.columns[i];
        if ((without_1 && column.goes == 1) || (without_2 && column.goes == 2)) continue;
        const std::string_view cell = cell_of(i);
        const auto fill = widths[i] - cell.size();
        out_.blanks(2 + (column.right ? fill : 0));
        text_.append(out_, cell);
        if (!column.right && i + 1 < widths.size()) out_.blanks(fill);
      }
    };
    if (options_.color) out_.append(kHeadColor);
    line([&table](std::size_t i) { return table.columns[i].head; });
    if (options_.color) out_.append(kPlain);
    out_.append('\n');
    for (std::size_t r = 0; r < table.rows.size(); r++) {
      line([&table, r](std::size_t i) { return std::string_view(table.rows[r][i]); });
      if (r < table.bars.size() && !table.bars[r].empty()) out_.append("  " + table.bars[r]);
      out_.append('\n');
    }
  }

  Output& out_;
  const Tally& tally_;
  const TextReport& options_;
  Text text_;
};

}  // namespace

void write_text(Output& out, const Tally& tally, const TextReport& report) {
  Report(out, tally, report).all();
}

}  // namespace wirelines::host
