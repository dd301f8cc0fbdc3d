// wirelines view, asked over HTTP.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>

#include "hex.hpp"
#include "host/view/frame_set.hpp"
#include "viewer.hpp"

namespace wirelines::host {
namespace {

using Json = nlohmann::json;

TEST(FrameSet, finds_the_nth_frame_and_the_number_of_those_before_one) {
  std::mt19937 random(1);
  for (const unsigned gap : {1U, 3U, 100U, 5000U}) {
    FrameSet set;
    std::vector<std::uint64_t> numbers;
    EXPECT_EQ(set.below(5), 0U);
    for (std::uint64_t number = 1 + random() % gap; numbers.size() < 3000; number += 1 + random() % gap) {
      set.add(number);
      numbers.push_back(number);
    }
    ASSERT_EQ(set.size(), numbers.size());
    for (std::uint64_t i = 0; i < numbers.size(); i++) {
      ASSERT_EQ(set.at(i), numbers[i]) << gap;
      ASSERT_EQ(set.below(numbers[i]), i) << gap;
      ASSERT_EQ(set.below(numbers[i] + 1), i + 1) << gap;
    }
    EXPECT_EQ(set.below(numbers.back() + 100000), numbers.size());
  }
}

class View : public Program {
 protected:
  View() { folder_.file("index.html", "<!doctype html>the page"); }

  [[nodiscard]] std::string page() const { return "--assets '" + folder_.path("") + "' "; }
  [[nodiscard]] static std::string example(const std::string& name) {
    return std::string(SOURCE_DIR) + "/examples/" + name;
  }
  [[nodiscard]] std::string quoted_trace() const { return "'" + trace_ + "'"; }

  std::vector<std::string> lines(const std::string& command) {
    std::istringstream in(run(command).out);
    std::vector<std::string> all;
    for (std::string line; std::getline(in, line);) all.push_back(line);
    return all;
  }
};

TEST_F(View, answers_only_its_own_page) {
  Viewer viewer(page() + quoted_trace());
  const auto api = viewer.path() + "api/state";
  const auto origin = "http://" + viewer.host();
  const auto port = viewer.host().substr(viewer.host().find(':'));
  auto wrong = viewer.path();
  wrong[1] = wrong[1] == '0' ? '1' : '0';
  const struct {
    const char* what;
    std::string path;
    httplib::Headers headers;
    int status;
  } kCases[] = {
      {"the page", viewer.path(), {}, 200},
      {"state", api, {}, 200},
      {"by another name", api, {{"Host", "localhost" + port}}, 200},
      {"own origin", api, {{"Origin", origin}}, 200},
      {"no token", "/", {}, 403},
      {"no token, asset", "/index.html", {}, 403},
      {"token alone", viewer.path().substr(0, viewer.path().size() - 1), {}, 403},
      {"wrong token", wrong, {}, 403},
      {"wrong token, api", wrong + "api/state", {}, 403},
      {"longer token", viewer.path().substr(0, viewer.path().size() - 1) + "0/", {}, 403},
      {"foreign host", api, {{"Host", "rebound.example" + port}}, 403},
      {"host without port", api, {{"Host", "127.0.0.1"}}, 403},
      {"two hosts", api, {{"Host", viewer.host()}, {"Host", "rebound.example"}}, 403},
      {"foreign origin", api, {{"Origin", "http://rebound.example"}}, 403},
      {"other port's origin", api, {{"Origin", "http://127.0.0.1:1"}}, 403},
      {"origin null", api, {{"Origin", "null"}}, 403},
      {"no such question", viewer.path() + "api/nothing", {}, 404},
      {"no such file", viewer.path() + "nothing.js", {}, 404},
      {"above the folder", viewer.path() + "../index.html", {}, 404},
      {"above the folder, hidden", viewer.path() + "%2e%2e/etc/passwd", {}, 404},
  };
  for (const auto& c : kCases) {
    const auto result = viewer.client().Get(c.path, c.headers);
    ASSERT_TRUE(result) << c.what;
    EXPECT_EQ(result->status, c.status) << c.what;
    EXPECT_EQ(result->get_header_value("Content-Security-Policy"),
              "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src 'self' data:; "
              "font-src 'self'; base-uri 'none'; frame-ancestors 'none'; form-action 'none'")
        << c.what;
    EXPECT_EQ(result->get_header_value("X-Content-Type-Options"), "nosniff") << c.what;
    EXPECT_EQ(result->get_header_value("Cache-Control"), "no-store") << c.what;
    EXPECT_FALSE(result->has_header("Access-Control-Allow-Origin")) << c.what;
  }
  EXPECT_NE(Viewer(page() + quoted_trace()).path(), viewer.path());

  const auto put = viewer.path() + "api/names";
  const std::string body = R"({"kind":"port","key":"9","name":"nine"})";
  EXPECT_EQ(viewer.client().Put(put, body, "application/json")->status, 403);
  EXPECT_EQ(viewer.client().Put(put, {{"X-Wirelines", "1"}}, body, "text/plain")->status, 403);
  EXPECT_EQ(viewer.client()
                .Put(put, {{"X-Wirelines", "1"}, {"Origin", "http://a.example"}}, body, "application/json")
                ->status,
            403);
  EXPECT_EQ(viewer.get("names")["names"], Json::array());
  EXPECT_EQ(viewer.client().Delete(put)->status, 404);
  EXPECT_EQ(viewer.end(SIGTERM), 0);
}

// What stands on the browser's command line is seen by others, and of no use to them.
TEST_F(View, the_browsers_address_leads_there_once) {
  const auto opened = folder_.path("opened");
  std::filesystem::permissions(folder_.file("xdg-open", "#!/bin/sh\necho \"$1\" >'" + opened + ".new'\nmv '" + opened +
                                                            ".new' '" + opened + "'\n"),
                               std::filesystem::perms::owner_all);
  const std::string path = std::getenv("PATH");
  setenv("PATH", (folder_.path("") + ":" + path).c_str(), 1);
  setenv("DISPLAY", ":0", 1);
  Viewer viewer(page() + quoted_trace(), true);
  setenv("PATH", path.c_str(), 1);
  unsetenv("DISPLAY");
  const auto address = run("for i in $(seq 100); do cat '" + opened + "' 2>/dev/null && break; sleep 0.1; done").out;
  ASSERT_TRUE(address.starts_with("http://" + viewer.host() + "/")) << address;
  EXPECT_EQ(address.find(viewer.path()), std::string::npos) << address;
  const auto door = address.substr(address.find(viewer.host()) + viewer.host().size(), 33);
  EXPECT_EQ(viewer.client().Get(door, {{"Host", "rebound.example"}})->status, 403);
  const auto first = viewer.client().Get(door);
  EXPECT_EQ(first->status, 302);
  EXPECT_EQ(first->get_header_value("Location"), viewer.path());
  EXPECT_EQ(viewer.client().Get(door)->status, 403);
}

// The loopback interface alone.
TEST_F(View, listens_on_loopback) {
  Viewer viewer(page() + quoted_trace());
  const auto port = std::stoi(viewer.host().substr(viewer.host().find(':') + 1));
  const auto sockets = run("cat /proc/net/tcp /proc/net/tcp6").out;
  char hex[8];
  std::snprintf(hex, sizeof hex, ":%04X ", port);
  std::vector<std::string> bound;
  std::istringstream in(sockets);
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::string number, local, remote, state;
    words >> number >> local >> remote >> state;
    if (state == "0A" && (local + " ").ends_with(hex)) bound.push_back(local.substr(0, local.find(':')));
  }
  EXPECT_EQ(bound, std::vector<std::string>{"0100007F"});
}

std::string words(const std::string& text) {
  std::istringstream in(text);
  std::string all;
  for (std::string word; in >> word;) all += (all.empty() ? "" : " ") + word;
  return all;
}

// Page by page, the rows are those of list, also of what cannot be read at any place.
TEST_F(View, rows_are_those_of_list) {
  const std::string smb = example("smb.pcap");
  run("gzip -c " + smb + " > smb.gz");
  auto blocks = pcapng_header();
  for (unsigned i = 0; i < 300; i++)
    blocks += pcapng_record(ethernet_frame(20 + i), 1714557600000000U + i, 1000) + pcapng_block(5, "");
  folder_.file("blocks.pcapng", blocks);
  const auto file = [this](const char* name) { return "'" + folder_.path(name) + "'"; };
  const struct {
    std::string arguments, list, filter;
  } kCases[] = {
      {smb, smb, ""},
      {"--utc " + smb, "--utc " + smb, "tcp.port == 139 and not smb"},
      {file("smb.gz"), smb, ""},
      {file("blocks.pcapng"), file("blocks.pcapng"), "frame.number in {1, 64..66, 128..300}"},
      {"- < " + smb, smb, "smb"},
      {"< <(sleep 0.3; cat " + smb + ")", smb, ""},
      {example("lan.pcap"), example("lan.pcap"), "dns or arp"},
  };
  for (const auto& c : kCases) {
    const auto wanted = lines("$W list " + (c.filter.empty() ? "" : "-Y '" + c.filter + "' ") + c.list);
    ASSERT_FALSE(wanted.empty());
    Viewer viewer(page() + c.arguments);
    viewer.wait_complete("state");
    const auto query = "rows?count=97&filter=" + httplib::detail::encode_query_param(c.filter) + "&from=";
    EXPECT_EQ(viewer.wait_complete(query + "0")["total"], wanted.size());
    std::vector<std::string> found;
    while (found.size() < wanted.size()) {
      const auto rows = viewer.get(query + std::to_string(found.size()))["rows"];
      ASSERT_FALSE(rows.empty()) << c.arguments;
      for (const auto& row : rows) {
        std::string line;
        for (const auto& cell : row["c"]) line += cell.get<std::string>() + " ";
        EXPECT_EQ(std::to_string(row["n"].get<int>()), row["c"][0]);
        EXPECT_EQ(row["bad"], line.find("checksum wrong") != std::string::npos);
        found.push_back(words(line));
      }
    }
    for (std::size_t i = 0; i < wanted.size(); i++) ASSERT_EQ(found[i], words(wanted[i])) << c.arguments;
    const auto last = std::to_string(wanted.size() - 1);
    const auto number = viewer.get(query + last)["rows"][0]["n"].get<int>();
    const auto row = "row?n=" + std::to_string(number) + "&filter=" + httplib::detail::encode_query_param(c.filter);
    EXPECT_EQ(std::to_string(viewer.get(row)["index"].get<int>()), last);
    EXPECT_EQ(viewer.get(query + std::to_string(wanted.size()))["rows"], Json::array());
    EXPECT_EQ(viewer.end(), 0);
  }
}

TEST_F(View, a_frame_has_the_lines_of_show_and_its_bytes) {
  const auto trace = example("lan.pcap");
  Viewer viewer(page() + trace);
  viewer.wait_complete("state");
  std::string found;
  for (int n = 1; n <= 40; n++) {
    const auto frame = viewer.get("frame?n=" + std::to_string(n));
    found +=
        "# frame " + std::to_string(n) + " length " + frame["length"].dump() + " top " + frame["top"].dump() + "\n";
    for (const auto& line : frame["lines"]) {
      const auto range = line.contains("s") ? line["s"].dump() + "-" + line["e"].dump() : "none";
      found += line["p"].dump() + " " + line["l"].dump() + " " + range + " " + line["y"][0].dump() + "," +
               line["y"][1].dump() + " |" + line["t"].get<std::string>() + "|\n";
    }
    const auto bytes = frame["bytes"].get<std::string>();
    EXPECT_EQ(bytes.size(), frame["length"].get<std::size_t>() * 2);
  }
  EXPECT_EQ(
      found,
      run(R"($W show --raw )" + trace + R"( | sed -E 's/ (0-0|4294967295-4294967295) / none /; s/\\x5C/\\/g')").out);
  EXPECT_EQ(viewer.get("frame?n=41", 404)["message"], "there is no frame 41");
  viewer.get("frame?n=0", 404);
  viewer.get("frame?n=x", 400);
  viewer.get("frame", 400);
  viewer.get("frame?n=1&charset=klingon", 400);
}

TEST_F(View, text_of_bytes_in_six_character_sets) {
  // 日本 in Shift-JIS, JIS, UTF-16 and EUC-JP, "AZ" in EBCDIC, then "A" and a lone lead byte, which ends the line.
  const auto bytes = bytes_of("93FA967B 467C 4B5C E565 2C67 C6FC CBDC C1E9 41 93");
  const std::string data(bytes.begin(), bytes.end());
  const auto trace = folder_.file("text.pcap", pcap_header() + pcap_record(std::string(16, '\0') + data, 1, 2, 40));
  Viewer viewer(page() + "'" + trace + "'");
  viewer.wait_complete("state");
  const struct {
    const char* charset;
    Json cells;  // some of them
  } kCases[] = {
      {"ascii", {{18, 1, "."}, {19, 1, "{"}, {20, 1, "F"}, {34, 1, "A"}}},
      {"sjis", {{16, 2, "日"}, {18, 2, "本"}, {20, 1, "F"}}},
      {"jis", {{20, 2, "日"}, {22, 2, "本"}}},
      {"utf16", {{24, 2, "日"}, {26, 2, "本"}}},
      {"euc", {{28, 2, "日"}, {30, 2, "本"}}},
      {"ebcdic", {{32, 1, "A"}, {33, 1, "Z"}}},
  };
  for (const auto& c : kCases) {
    const auto frame = viewer.get(std::string("frame?n=1&charset=") + c.charset);
    std::size_t offset = 0;
    for (const auto& cell : frame["cells"]) {
      EXPECT_EQ(cell[0], offset) << c.charset;
      offset += cell[1].get<std::size_t>();
    }
    EXPECT_EQ(offset, frame["length"]) << c.charset;
    for (const auto& cell : c.cells) {
      EXPECT_EQ(std::count(frame["cells"].begin(), frame["cells"].end(), cell), 1) << c.charset << " " << cell;
    }
  }
}

TEST_F(View, filters_and_times) {
  Viewer viewer(page() + quoted_trace());
  viewer.wait_complete("state");
  const struct {
    const char *query, *numbers;
  } kCases[] = {
      {"filter=frame.number%20%3E%201", "[2,3]"},
      {"filter=%20", "[1,2,3]"},
      {"filter=tcp", "[]"},
      {"after=1714557600123456000", "[1,2,3]"},
      {"after=1714557600123456001", "[2,3]"},
      {"before=1714557601000005000", "[1]"},
      {"after=1714557601000000000&before=1714557601000005001", "[2]"},
      {"after=1714557601000000000&filter=frame.number%20%3C%203", "[2]"},
  };
  for (const auto& c : kCases) {
    Json numbers = Json::array();
    const auto answer = viewer.wait_complete(std::string("rows?") + c.query);
    for (const auto& row : answer["rows"]) numbers.push_back(row["n"]);
    EXPECT_EQ(numbers.dump(), c.numbers) << c.query;
    EXPECT_EQ(answer["total"], numbers.size()) << c.query;
  }
  EXPECT_EQ(viewer.get("check?filter=tcp"), Json({{"ok", true}}));
  const std::string wrong = "line%20~%20%22%E6%97%A5%F0%9F%8D%A3%22%20nonsense";  // one unit of UTF-16, and two
  for (const auto& question : {"check?filter=", "rows?filter=", "stats?filter=", "row?n=1&filter="}) {
    const auto answer = viewer.get(question + wrong, std::string(question).starts_with("check") ? 200 : 400);
    EXPECT_EQ(answer["ok"], false) << question;
    EXPECT_EQ(answer["at"], 13) << answer;
  }
  viewer.get("rows?from=-1", 400);
}

TEST_F(View, sums_are_those_of_stats) {
  const auto trace = example("smb.pcap");
  Viewer viewer(page() + trace);
  viewer.wait_complete("state");
  for (const std::string filter : {"", "smb"}) {
    auto sums = viewer.wait_complete("stats?top=3&filter=" + filter);
    sums.erase("complete");
    EXPECT_EQ(sums,
              Json::parse(run("$W stats --json --top 3 " + (filter.empty() ? "" : "-Y " + filter + " ") + trace).out));
    const auto timeline = viewer.wait_complete("timeline?bins=7&filter=" + filter);
    std::uint64_t frames = 0;
    for (const auto& count : timeline["frames"]) frames += count.get<std::uint64_t>();
    EXPECT_EQ(frames, sums["frames"]);
    EXPECT_LE(timeline["frames"].size(), 7U);
  }
}

TEST_F(View, names_are_edited_and_saved) {
  const auto file = folder_.path("config/wirelines/names");
  run("mkdir -p config/wirelines; printf '# mine\\nport 53 old\\nport 9 nine # kept\\n' > config/wirelines/names");
  Viewer viewer(page() + example("lan.pcap"));
  viewer.wait_complete("rows?filter=" + httplib::detail::encode_query_param("udp.port == \"日本\""));
  EXPECT_EQ(viewer.get("names")["names"].size(), 2U);
  auto names = viewer.send("PUT", "names", {{"kind", "port"}, {"key", "53"}, {"name", "日本"}});
  EXPECT_EQ(names["unsaved"], 1);
  const auto rows = viewer.wait_complete("rows?filter=" + httplib::detail::encode_query_param("udp.port == \"日本\""));
  EXPECT_EQ(rows["total"], 12);  // asked again, with the new name
  EXPECT_EQ(rows["rows"][0]["c"][6], "44673 > 53 日本");
  viewer.send("PUT", "names", {{"kind", "station"}, {"key", "02-00-00-00-00-01"}, {"name", "one"}});
  viewer.send("PUT", "names", {{"kind", "port"}, {"key", "9"}, {"name", ""}});

  const Json kWrong[] = {{{"kind", "door"}, {"key", "1"}, {"name", "x"}},
                         {{"kind", "ip"}, {"key", "1.2.3"}, {"name", "x"}},
                         {{"kind", "ip"}, {"key", "1.2.3.4"}, {"name", "two\nlines"}},
                         {{"kind", "ip"}, {"key", "1.2.3.4"}},
                         {{"kind", "ip"}, {"key", 1}, {"name", "x"}},
                         "nonsense"};
  for (const auto& wrong : kWrong) EXPECT_TRUE(viewer.send("PUT", "names", wrong, 400).contains("message")) << wrong;

  EXPECT_EQ(contents(file), "# mine\nport 53 old\nport 9 nine # kept\n");
  names = viewer.send("POST", "names/save", Json::object());
  EXPECT_EQ(names["unsaved"], 0);
  EXPECT_EQ(names["file"], file);
  EXPECT_EQ(contents(file), "# mine\nport 53 日本\nstation 020000000001 one\n");
  EXPECT_EQ(names, viewer.get("names"));
  EXPECT_EQ(viewer.get("rows?from=16&count=1")["rows"][0]["c"][6], "44673 > 53 日本");
}

TEST_F(View, a_damaged_trace_shows_what_is_readable_and_grows) {
  const auto whole = contents(trace_);
  run("head -c -20 trace.pcap > cut.pcap");
  Viewer viewer(page() + "'" + folder_.path("cut.pcap") + "'");
  auto state = viewer.wait_complete("state");
  EXPECT_EQ(state["frames"], 2);
  EXPECT_TRUE(state["damage"].is_null()) << "it may still be written: " << state;
  state = viewer.wait("state", [](const Json& answer) { return !answer["damage"].is_null(); });
  EXPECT_NE(state["damage"].get<std::string>().find("broken at frame 3, offset 87"), std::string::npos) << state;
  EXPECT_EQ(viewer.get("rows")["total"], 2);
  viewer.get("frame?n=2");
  viewer.get("frame?n=3", 404);

  const auto frames = [](int wanted) {
    return [wanted](const Json& answer) { return answer["frames"] == wanted && answer["damage"].is_null(); };
  };
  run("tail -c 20 trace.pcap >> cut.pcap");
  viewer.wait("state", frames(3));
  EXPECT_EQ(viewer.get("frame?n=3")["length"], 17);

  EXPECT_EQ(viewer.send("POST", "pause", {{"paused", true}})["paused"], true);
  run("tail -c +25 trace.pcap >> cut.pcap");
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_EQ(viewer.get("state")["frames"], 3);
  viewer.send("POST", "pause", {{"paused", false}});
  viewer.wait("state", frames(6));
  EXPECT_EQ(
      viewer.wait("rows?filter=frame.number%20%3E%203", [](const Json& a) { return a["total"] == 3; })["rows"][2]["n"],
      6);

  run("gzip -c trace.pcap | head -c -12 > cut.gz");
  Viewer gzip(page() + "'" + folder_.path("cut.gz") + "'");
  state = gzip.wait_complete("state");
  EXPECT_NE(state["damage"].get<std::string>().find("compressed data end too early"), std::string::npos) << state;
}

// Run from where the program's file stands, but without the rights that the file may have.
TEST_F(View, is_a_program_of_its_own) {
  if (geteuid() != 0) GTEST_SKIP() << "not root";
  std::filesystem::permissions(folder_.path(""), std::filesystem::perms::all);
  const auto viewer = std::filesystem::relative(VIEWER, std::filesystem::path(PROGRAM).parent_path()).string();
  const auto shown = run("install -D -m 4755 $W bin/wirelines; install -D /bin/cat bin/" + viewer +
                         "; setpriv --reuid=65534 --clear-groups bin/wirelines view /proc/self/status");
  EXPECT_NE(shown.out.find("\nUid:\t65534\t65534\t65534\t65534\n"), std::string::npos) << shown.out << shown.err;
  const auto missing = run("rm bin/" + viewer + "; bin/wirelines view $T");
  EXPECT_EQ(missing.exit_code, 69);
  EXPECT_EQ(missing.err,
            "wirelines: " + std::filesystem::path(folder_.path("bin/") + viewer).lexically_normal().string() +
                ", which serves the page, cannot be run: No such file or directory\n");
}

// Frames of another trace would pass for those that are known.
TEST_F(View, a_trace_that_is_replaced_is_read_no_more) {
  for (const std::string how : {"mv lan.pcap other.pcap", "cat lan.pcap > other.pcap", "rm other.pcap"}) {
    run("cp " + example("lan.pcap") + " .; cp $T other.pcap");
    Viewer viewer(page() + "'" + folder_.path("other.pcap") + "'");
    viewer.wait_complete("state");
    run(how);
    const auto state = viewer.wait("state", [](const Json& answer) { return !answer["damage"].is_null(); });
    EXPECT_NE(state["damage"].get<std::string>().find("was replaced or removed"), std::string::npos) << how;
    EXPECT_EQ(state["frames"], 3) << how;
    viewer.get("frame?n=1", 500);
    viewer.get("rows", 500);
  }
}

TEST_F(View, troubles_before_it_serves) {
  Viewer other(page() + quoted_trace());
  const auto port = other.host().substr(other.host().find(':') + 1);
  folder_.file("text", "no trace at all, but long enough");
  const struct {
    std::string arguments;
    int exit_code;
    const char* message;
  } kCases[] = {
      {"nothing.pcap", 66, "cannot be opened"},
      {"text", 65, "is not a pcap or pcapng trace"},
      {"$T $T", 64, "view shows one trace"},
      {"-f 'port 53' $T", 64, "the page has a filter"},
      {"--port 0 $T", 64, "--port"},
      {"--charset raw $T", 64, "no such character set"},
      {"--port " + port + " $T", 69, "is taken"},
      {"--names nothing $T", 66, "nothing"},
  };
  for (const auto& c : kCases) {
    const auto result = run("timeout 10 $W view --no-open --assets . " + c.arguments);
    EXPECT_EQ(result.exit_code, c.exit_code) << c.arguments << result.err;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "") << c.arguments;
  }
  EXPECT_EQ(run("timeout -k 5 0.3 $W view --no-open - < <(exec sleep 9)").exit_code, 124) << "waiting for a trace";
}

}  // namespace
}  // namespace wirelines::host
