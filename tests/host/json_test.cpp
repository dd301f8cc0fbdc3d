// JSON and rows for programs: strings, the fields that a frame has, and the schemas against what is written.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

#include "files.hpp"
#include "hex.hpp"
#include "host/json_text.hpp"
#include "host/summary.hpp"
#include "written.hpp"

namespace wirelines::host {
namespace {

using nlohmann::json;

// What `command` prints, $W being the program.
std::string printed(const std::string& command) {
  setenv("W", PROGRAM, 1);
  FILE* pipe = popen(command.c_str(), "r");
  std::string text;
  std::array<char, 4096> part;
  for (std::size_t size = 0; (size = fread(part.data(), 1, part.size(), pipe)) > 0;) text.append(part.data(), size);
  pclose(pipe);
  return text;
}

std::vector<json> printed_objects(const std::string& command) {
  std::istringstream text(printed(command));
  std::vector<json> objects;
  for (std::string line; std::getline(text, line);) objects.push_back(json::parse(line));
  return objects;
}

// What is wrong with `value` by as much of JSON Schema (draft 7) as the schemas use; empty for nothing. A keyword that
// is not known is wrong.
std::string check(const json& schema, const json& value, const std::string& where) {
  const std::set<std::string> silent = {"$schema", "title", "description", "format", "items"};
  const auto wrong = [&](const std::string& what) { return where + ": " + what + ": " + value.dump(); };
  for (const auto& [keyword, wanted] : schema.items()) {
    if (keyword == "type") {
      const bool right = wanted == "integer" ? value.is_number_integer() : value.type_name() == wanted;
      if (!right) return wrong("not of type " + wanted.dump());
    } else if (keyword == "const") {
      if (value != wanted) return wrong("is not " + wanted.dump());
    } else if (keyword == "minimum" || keyword == "maximum") {
      if (keyword == "minimum" ? value < wanted : value > wanted) return wrong(keyword);
    } else if (keyword == "pattern") {
      if (!std::regex_search(value.get<std::string>(), std::regex(wanted.get<std::string>()))) return wrong(keyword);
    } else if (keyword == "required") {
      for (const auto& key : wanted) {
        if (!value.contains(key)) return wrong("without " + key.dump());
      }
    } else if (keyword == "properties") {
      for (const auto& [key, part] : value.items()) {
        if (!wanted.contains(key)) continue;
        if (auto found = check(wanted[key], part, where + "/" + key); !found.empty()) return found;
      }
    } else if (keyword == "additionalProperties") {
      for (const auto& [key, part] : value.items()) {
        if (!wanted && !schema["properties"].contains(key)) return wrong("has " + key);
      }
    } else if (keyword == "minItems" || keyword == "maxItems") {
      if (keyword == "minItems" ? value.size() < wanted : value.size() > wanted) return wrong(keyword);
    } else if (silent.count(keyword) == 0) {
      return where + ": unknown keyword " + keyword;
    }
  }
  if (!schema.contains("items")) return "";
  for (std::size_t i = 0; i < value.size(); i++) {
    if (auto found = check(schema["items"], value[i], where + "/" + std::to_string(i)); !found.empty()) return found;
  }
  return "";
}

json schema_of_frames() {
  std::ifstream file(SOURCE_DIR "/docs/json.schema.json");
  return json::parse(file);
}

std::string as_json(const std::string& bytes) {
  return written([&bytes](Output& out) { JsonText().append(out, bytes); });
}

TEST(JsonText, strings) {
  const struct {
    std::string bytes, json;
  } kCases[] = {
      {"", R"("")"},
      {"[Flags] 2", R"("[Flags] 2")"},
      {"a \"b\" c:\\d", R"("a \"b\" c:\\d")"},
      {"\x01\n\x1F\x7F", R"("\u0001\u000a\u001f\u007f")"},
      {"\xB6\x93\xFA", "\"\uFF76\u65E5\""},
      {"\x83\x5C\"", "\"\u30BD\\\"\""},  // its second byte is a backslash alone
      {"\x81\"", "\"\uFFFD\\\"\""},      // a broken pair hides no quote
      {"\xFF\x83", "\"\uFFFD\uFFFD\""},
  };
  for (const auto& c : kCases) EXPECT_EQ(as_json(c.bytes), c.json);
}

TEST(JsonText, every_pair_of_bytes_is_valid) {
  for (int first = 0; first < 256; first++) {
    for (int second = 0; second < 256; second++) {
      const auto text = as_json({static_cast<char>(first), static_cast<char>(second)});
      ASSERT_TRUE(json::accept(text)) << first << " " << second << " " << text;
      ASSERT_TRUE(std::none_of(text.begin(), text.end(), [](char c) { return (c >= 0 && c < 0x20) || c == 0x7F; }));
    }
  }
}

std::string bytes(const std::string& hex) {
  const auto all = bytes_of(hex);
  return {all.begin(), all.end()};
}

// The `sum` of each frame: what it has, and nothing that it does not have.
TEST(Json, sum) {
  const std::string mac = "010203040506 0A0B0C0D0E0F ";
  const std::string ip = mac + "0800 45000028 00000000 4006 0000 ";
  const std::string fill_ip = "A5A5A5A5 A5A5A5A5 ";
  const struct {
    const char* what;
    std::string frame, sum;
  } kCases[] = {
      {"too short for anything", mac + "0800 4500", "{}"},
      {"an unknown type", mac + "88B5 000000", R"({"etherType":34997,"frameKind":4})"},
      {"the fill as a type", mac + "A5A5 000000", R"({"etherType":42405,"frameKind":4})"},
      {"LLC", mac + "0003 F0F003", R"({"dsap":240,"frameKind":2,"network":"netbios","networkCode":4102,"ssap":240})"},
      {"SNAP without its type", mac + "0003 AAAA03 0000", R"({"dsap":170,"frameKind":3,"ssap":170})"},
      {"IPv4 cut in its header", mac + "0800 4500001C 00",
       R"({"etherType":2048,"frameKind":4,"network":"ip",)"
       R"("networkCode":4097,"networkOffset":14})"},
      {"TCP", ip + "0A000001 C0A80002 0050A5A5 00000000 00000000 5012 0000 0000 0000",
       R"({"dstIp":"192.168.0.2","dstPort":42405,"etherType":2048,"frameKind":4,"ipProtocol":6,"network":"ip",)"
       R"("networkCode":4097,"networkOffset":14,"srcIp":"10.0.0.1","srcPort":80,"transportOffset":34,"typeCode":18})"},
      {"TCP full of the fill", ip + fill_ip + "A5A5A5A5 00000000 00000000 50A5 0000 0000 0000",
       R"({"dstIp":"165.165.165.165","dstPort":42405,"etherType":2048,"frameKind":4,"ipProtocol":6,"network":"ip",)"
       R"("networkCode":4097,"networkOffset":14,"srcIp":"165.165.165.165","srcPort":42405,"transportOffset":34,)"
       R"("typeCode":165})"},
      {"TCP cut before its end", ip + "0A000001 C0A80002 0050A5A5",
       R"({"dstIp":"192.168.0.2","etherType":2048,"frameKind":4,"ipProtocol":6,"network":"ip","networkCode":4097,)"
       R"("networkOffset":14,"srcIp":"10.0.0.1","transportOffset":34})"},
      {"a fragment, and a wrong checksum not looked at", mac + "0800 45000028 00000005 4011 FFFF 0A000001 C0A80002",
       R"({"dstIp":"192.168.0.2","dstPort":0,"etherType":2048,"frameKind":4,"ipProtocol":17,)"
       R"("network":"ip-fragment","networkCode":4098,"networkOffset":14,"srcIp":"10.0.0.1","srcPort":0})"},
      {"a wrong header checksum", mac + "0800 45000014 00000000 4002 FFFF 0A000001 C0A80002",
       R"({"dstIp":"192.168.0.2","errorFlags":129,"etherType":2048,"frameKind":4,"ipProtocol":2,"network":"ip",)"
       R"("networkCode":4097,"networkOffset":14,"srcIp":"10.0.0.1","transportOffset":34})"},
      {"ARP", mac + "0806 0001 0800 06 04 0002 0A0B0C0D0E0F 0A000001 010203040506 0A000002",
       R"({"dstIp":"10.0.0.2","etherType":2054,"frameKind":4,"network":"arp","networkCode":4099,)"
       R"("srcIp":"10.0.0.1","typeCode":2})"},
      {"IPv6", mac + "86DD 60000000 0000 3B 40 FE800000000000000202B3FFFE1E8329 00000000000000000000000000000001",
       R"({"dstIp6":"::1","dstPort":0,"etherType":34525,"frameKind":4,"ipProtocol":59,"network":"ip6",)"
       R"("networkCode":4106,"networkOffset":14,"srcIp6":"fe80::202:b3ff:fe1e:8329","srcPort":0,)"
       R"("transportOffset":54})"},
      {"IPv6 cut, inside IPv4", mac + "0800 45000018 00000000 4029 0000 0A000001 0A000002 60000000",
       R"({"dstIp":"10.0.0.2","etherType":2048,"frameKind":4,"ipProtocol":41,"network":"ip6","networkCode":4106,)"
       R"("networkOffset":34,"srcIp":"10.0.0.1","transportOffset":54})"},
      {"IPX", mac + "8137 FFFF 001E 00 04 00000001 FFFFFFFFFFFF 0452 00000002 00001B123456 4003",
       R"({"etherType":33079,"frameKind":4,"ipProtocol":4,"ipxDstNet":"00000001","ipxDstNode":"ffffffffffff",)"
       R"("ipxDstSocket":1106,"ipxSrcNet":"00000002","ipxSrcNode":"00001b123456","ipxSrcSocket":16387,)"
       R"("network":"ipx","networkCode":4101})"},
      {"PPPoE discovery", mac + "8863 11 09 0000 0000",
       R"({"etherType":34915,"frameKind":4,"network":"pppoe","networkCode":4609,"typeCode":9})"},
      {"LCP in a session", mac + "8864 11 00 0001 0006 C021 01010004",
       R"({"etherType":34916,"frameKind":4,"network":"lcp","networkCode":4610,"networkOffset":22})"},
  };
  const Folder folder;
  for (const auto& c : kCases) {
    const auto frame = bytes(c.frame);
    const auto trace = folder.file("t.pcap", pcap_header() + pcap_record(frame, 1, 2, 60));
    const auto objects = printed_objects("$W json --lines none " + trace);
    ASSERT_EQ(objects.size(), 1U) << c.what;
    EXPECT_EQ(objects[0]["sum"], json::parse(c.sum)) << c.what << "\n" << objects[0]["sum"];
  }
}

TEST(Json, a_whole_frame) {
  const Folder folder;
  const auto trace = folder.file(
      "t.pcap", pcap_header({false, true}) + pcap_record(ethernet_frame(17, '\"'), 951782400, 5, 1514, {false, true}));
  const std::string fields =
      R"j({"v":1,"frame":1,"time":"2000-02-29T00:00:00.000000005Z","offset":24,"length":17,)j"
      R"j("originalLength":1514,"top":0,"sum":{"frameKind":4,"etherType":34997},"lines":[)j"
      R"j({"t":"--- MAC [0A0B0C0D0E0F] --> [010203040506] )j"
      R"j(---------------------------------","p":10,"l":0,"s":0,"e":11,"y":[2,9]},)j"
      R"j({"t":"[Time] 02/29/2000 00:00:00.000000","p":73,"l":1},{"t":"[Length] 17 (0x0011) byte(s)"},)j"
      R"j({"t":"[Destination Address] 010203040506 ","s":0,"e":5},)j"
      R"j({"t":"[Source Address] 0A0B0C0D0E0F ","s":6,"e":11},{"t":""},)j"
      R"j({"t":"--- Data Link [Ethernet_II] -----------------------------------------------",)j"
      R"j("p":12,"l":0,"s":12,"e":13,"y":[4,9]},)j"
      R"j({"t":"[Frame Type] Ethernet_II","p":75,"l":1,"s":12,"e":13},)j"
      R"j({"t":"[Protocol Type] 0x88B5 ","s":12,"e":13},{"t":""},)j"
      R"j({"t":"---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------",)j"
      R"j("p":0,"l":0,"s":14,"e":16,"y":[1,10]})j";
  EXPECT_EQ(printed("$W json --utc -n " + trace), fields + "]}\n");
  EXPECT_EQ(printed("$W json --utc -n --lines all " + trace),
            fields + R"j(,{"t":"0000  22 22 22 20  0  0  0  0                            \"\"\"",)j"
                     R"j("p":63,"l":1,"s":14,"e":16}]})j"
                     "\n");
}

// The objects of a frame with what they have from the ones before.
std::vector<json> carried_on(const json& lines) {
  std::vector<json> result;
  json carried;
  for (const auto& line : lines) {
    const bool blank = line == json{{"t", ""}};
    for (const char* key : {"p", "l", "y"}) {
      if (line.contains(key)) carried[key] = line[key];
    }
    result.push_back(line);
    if (!blank) result.back().update(carried);
  }
  return result;
}

// A line as show --raw has it, without telling apart the ways of describing no bytes.
std::string raw_form(const json& line) {
  if (line == json{{"t", ""}}) return "65535 65535 0-0 0,0 ||";
  const auto start = line.value("s", 0U);
  std::ostringstream text;
  text << line["p"] << ' ' << line["l"] << ' ' << start << '-' << line.value("e", start) << ' ' << line["y"][0] << ','
       << line["y"][1] << " |" << line["t"].get<std::string>() << '|';
  return text.str();
}

// Every line of the samples is that of show --raw; `top` is the same line whichever lines are left out; and the way of
// carrying on that the manual gives is right.
TEST(Json, lines) {
  std::string manual = printed("cat " SOURCE_DIR "/docs/man/wirelines.1.scd");
  manual.erase(0, manual.find("jq -c '.lines"));
  const auto filter = manual.substr(0, manual.find("\n```"));
  ASSERT_NE(filter, "");
  const bool jq = printed("command -v jq") != "";
  for (const std::string sample : {"lan", "smb-old", "pppoe", "dns"}) {
    const auto trace = SOURCE_DIR "/examples/" + sample + ".pcap";
    const auto all = printed_objects("$W json --no-lift --lines all " + trace);
    const auto fields = printed_objects("$W json --no-lift " + trace);
    const auto filtered = printed_objects("$W json --no-lift " + trace + (jq ? " | " + filter : ""));
    ASSERT_EQ(fields.size(), all.size());
    ASSERT_EQ(filtered.size(), all.size());
    std::istringstream raw(
        printed("$W show --raw " + trace + " | grep -v '^#' | sed 's/ 4294967295-4294967295 / 0-0 /'"));
    std::string wanted;
    for (std::size_t i = 0; i < all.size(); i++) {
      const auto lines = carried_on(all[i]["lines"]);
      const auto kept = carried_on(fields[i]["lines"]);
      std::size_t k = 0;
      for (const auto& line : lines) {
        ASSERT_TRUE(std::getline(raw, wanted));
        if (wanted.find("\\x") == std::string::npos) {
          EXPECT_EQ(raw_form(line), wanted) << trace;
        }
        if (line.value("p", 0) != 63) {
          ASSERT_EQ(kept.at(k++), line) << trace;
        }
      }
      EXPECT_EQ(k, kept.size()) << trace;
      EXPECT_EQ(lines.at(all[i]["top"]), kept.at(fields[i]["top"])) << trace << i;
      EXPECT_EQ(filtered[i]["lines"], jq ? json(kept) : fields[i]["lines"]) << trace;
    }
    EXPECT_FALSE(std::getline(raw, wanted)) << trace;
  }
  if (!jq) GTEST_SKIP() << "no jq: the manual's example was not run";
}

// Both forms see a frame behind tags, and without Ethernet, as show does: offsets are those of the real frame, and the
// traces of several are told apart.
TEST(Json, link_layers_and_several_traces) {
  const Folder folder;
  const std::string udp = "4500001C 00000000 4011 0000 0A000001 0A000002 C0000035 0008 0000";
  const struct {
    const char* what;
    std::uint32_t link_type;
    std::string frame;
    int network, transport, ip_line;  // offsets, and the first byte of the title of the IP header
  } kCases[] = {
      {"ethernet", 1, "010203040506 0A0B0C0D0E0F 0800 " + udp, 14, 34, 14},
      {"tagged", 1, "010203040506 0A0B0C0D0E0F 8100 0005 0800 " + udp, 18, 38, 18},
      {"twice", 1, "010203040506 0A0B0C0D0E0F 88A8 0005 8100 0006 0800 " + udp, 22, 42, 22},
      {"cooked", 113, "0000 0001 0006 0A0B0C0D0E0F 0000 0800 " + udp, 16, 36, 16},
      {"raw", 101, udp, 0, 20, 0},
      {"ppp", 9, "FF03 0021 " + udp, 4, 24, 4},
  };
  std::string traces;
  for (const auto& c : kCases) {
    traces += " " + folder.file(c.what, pcap_header({}, c.link_type) + pcap_record(bytes(c.frame), 1, 0, 100));
  }
  const auto objects = printed_objects("$W json" + traces);
  const auto rows = printed_objects("$W classify -T jsonl" + traces);
  std::size_t titles = 0;
  ASSERT_EQ(objects.size(), std::size(kCases));
  ASSERT_EQ(rows.size(), std::size(kCases));
  for (std::size_t i = 0; i < objects.size(); i++) {
    const auto& c = kCases[i];
    for (const auto* found : {&objects[i], &rows[i]}) {
      EXPECT_EQ((*found)["file"], folder.path(c.what));
      EXPECT_EQ((*found)["frame"], i + 1);
    }
    const auto& sum = objects[i]["sum"];
    EXPECT_EQ(sum["dstPort"], 53) << c.what;
    EXPECT_EQ(sum["srcIp"], "10.0.0.1") << c.what;
    EXPECT_EQ(sum.value("networkOffset", -1), c.network) << c.what;
    EXPECT_EQ(sum.value("transportOffset", -1), c.transport) << c.what;
    for (const auto& [key, value] : sum.items()) EXPECT_EQ(rows[i][key], value) << c.what << key;
    for (const auto& line : objects[i]["lines"]) {
      if (!line["t"].get<std::string>().starts_with("--- IP Header")) continue;
      EXPECT_EQ(line["s"], c.ip_line) << c.what;
      titles++;
    }
  }
  EXPECT_EQ(titles, objects.size());
  EXPECT_EQ(printed_objects("$W json --no-lift " + folder.path("tagged"))[0]["sum"]["etherType"], 0x8100);
  EXPECT_EQ(printed_objects("$W json " + folder.path("raw"))[0].count("file"), 0U) << "one trace needs no name";
}

// The columns of rows, in both forms, and what a time that does not fit becomes.
TEST(Classify, rows) {
  const Folder folder;
  folder.file("a\tb\\.pcap", pcap_header() + pcap_record(ethernet_frame(17), 86400, 1500000, 60));
  const auto path = folder.path("");
  EXPECT_EQ(printed("cd '" + path + "'; $W classify a*.pcap").substr(0, 97),
            "a\\tb\\\\.pcap\t1\t24\t1970-01-02 00:00:01\t500000000\t17\t60\t010203040506\t0a0b0c0d0e0f\t0\t"
            "4\t\\N\t\\N\t34997\t\\N");
  EXPECT_EQ(printed("cd '" + path + "'; $W classify -T jsonl a*.pcap"),
            R"({"file":"a\tb\\.pcap","frame":1,"offset":24,"time":"1970-01-02 00:00:01","nanoseconds":500000000,)"
            R"("length":17,"originalLength":60,"dstStation":"010203040506","srcStation":"0a0b0c0d0e0f",)"
            R"("wrongChecksums":0,"frameKind":4,"etherType":34997})"
            "\n");
  folder.file("late.pcap", pcapng_header() + pcapng_record(ethernet_frame(17), 300000000000000000, 17));
  EXPECT_EQ(printed_objects("$W json " + folder.path("late.pcap"))[0].count("time"), 0U);
  EXPECT_NE(printed("$W classify " + folder.path("late.pcap")).find("late.pcap\t1\t48\t1970-01-01 00:00:00\t"),
            std::string::npos);
}

// What a row has besides the classifier's record, and when: time, both stations, wrong checksums beside errorFlags.
TEST(Classify, columns) {
  constexpr std::uint32_t kEthernet = 1;
  constexpr std::uint32_t kRawIp = 101;
  const std::string mac = "010203040506 0A0B0C0D0E0F ";
  const std::string wrong_ip = "45000014 00000000 4002 FFFF 0A000001 C0A80002";
  const std::string wrong_tcp =
      "45000028 00000000 4006 0000 0A000001 C0A80002 0050A5A5 00000000 00000000 50120000 FFFF0000";
  const std::string stations = "010203040506\t0a0b0c0d0e0f\t";
  const struct {
    const char* what;
    std::uint32_t link;
    std::string frame;
    std::uint64_t seconds;
    std::uint32_t missing;  // bytes of the frame that were not captured
    std::string columns;
  } kCases[] = {
      {"one byte short of stations", kEthernet, mac.substr(0, 23), 0, 0, "1970-01-01 00:00:00\t\\N\t\\N\t0\t\\N\n"},
      {"stations, nothing else", kEthernet, mac, 0, 0, "1970-01-01 00:00:00\t" + stations + "0\t\\N\n"},
      {"without Ethernet", kRawIp, wrong_ip, 0, 0, "1970-01-01 00:00:00\t\\N\t\\N\t1\t129\n"},
      {"TCP", kEthernet, mac + "0800" + wrong_tcp, 0, 0, "1970-01-01 00:00:00\t" + stations + "4\t132\n"},
      {"TCP, cut", kEthernet, mac + "0800" + wrong_tcp, 0, 1, "1970-01-01 00:00:00\t" + stations + "0\t132\n"},
      {"IPv4, cut", kEthernet, mac + "0800" + wrong_ip, 0, 1, "1970-01-01 00:00:00\t" + stations + "1\t129\n"},
      {"last time", kEthernet, mac, 4291747199, 0, "2105-12-31 23:59:59\t" + stations + "0\t\\N\n"},
      {"too late", kEthernet, mac, 4291747200, 0, "1970-01-01 00:00:00\t" + stations + "0\t\\N\n"},
  };
  const Folder folder;
  for (const auto& c : kCases) {
    const auto frame = bytes(c.frame);
    const auto length = static_cast<std::uint32_t>(frame.size()) + c.missing;
    const auto trace =
        folder.file("t.pcapng", pcapng_header(c.link) + pcapng_record(frame, c.seconds * 1000000, length));
    EXPECT_EQ(printed("$W classify " + trace + " | cut -f 4,8-10,33"), c.columns) << c.what;
  }
}

// A column of the table is a column of the rows. What is repeated replaces what is there: on one server, by what stays
// the same.
TEST(Classify, clickhouse) {
  const auto table = printed("$W classify --schema clickhouse");
  const std::regex column(
      "\n    [a-zA-Z0-9]+ (Nullable\\()?(U?Int(8|16|32|64)|String|FixedString\\([0-9]+\\)|"
      "DateTime\\('UTC'\\))\\)?,?(?=\n)");
  const auto columns = std::distance(std::sregex_iterator(table.begin(), table.end(), column), {});
  const auto end = table.find("\n)\n");
  EXPECT_EQ(columns, std::count(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(end), '\n') - 1) << table;
  EXPECT_EQ(table.substr(end),
            "\n)\nENGINE = ReplacingMergeTree()\nPARTITION BY toYYYYMMDD(time)\n"
            "ORDER BY (file, frame);\n\nCREATE TABLE frames AS frames_local\n"
            "ENGINE = Distributed(wirelines, currentDatabase(), frames_local, sipHash64(file));\n");
  const auto row = printed("$W classify -c 1 " SOURCE_DIR "/examples/dns.pcap");
  EXPECT_EQ(columns, std::count(row.begin(), row.end(), '\t') + 1);
}

// Real frames against both schemas.
TEST(Json, schemas) {
  const auto frames = schema_of_frames();
  const auto rows = json::parse(printed("$W classify --schema json"));
  for (const auto& [key, wanted] : frames["properties"]["sum"]["properties"].items()) {
    EXPECT_EQ(rows["properties"][key], wanted) << key;
  }
  EXPECT_EQ(frames["properties"]["sum"]["properties"].size(), summary_fields().size());
  for (const char* bad : {R"({"v":1})", R"({"v":2,"frame":1,"offset":1,"length":1,"originalLength":1,"sum":{}})",
                          R"({"v":1,"frame":1,"offset":1,"length":1,"originalLength":1,"sum":{"dstPort":65536}})",
                          R"({"v":1,"frame":1,"offset":1,"length":1,"originalLength":1,"sum":{},"lines":[{"p":1}]})"}) {
    EXPECT_NE(check(frames, json::parse(bad), ""), "") << bad;
  }
  for (const auto& entry : std::filesystem::directory_iterator(SOURCE_DIR "/examples")) {
    if (entry.path().extension() != ".pcap") continue;
    const auto trace = entry.path().string();
    for (const auto& object : printed_objects("$W json --lines all " + trace)) {
      ASSERT_EQ(check(frames, object, trace), "");
    }
    for (const auto& object : printed_objects("$W classify -T jsonl " + trace)) {
      ASSERT_EQ(check(rows, object, trace), "");
    }
  }
}

}  // namespace
}  // namespace wirelines::host
