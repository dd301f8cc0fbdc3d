#include "server.hpp"

#include <sys/random.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <thread>
#include <utility>

#include "assets.hpp"
#include "host/json_text.hpp"
#include "host/report.hpp"

namespace wirelines::host {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kLoopback = "127.0.0.1";
constexpr const char* kJson = "application/json";
constexpr std::size_t kThreads = 24;  // a browser keeps up to six connections a tab, and each has a thread
constexpr std::uint64_t kMostRows = 1000;

// 128 bits that nobody can guess, in hexadecimal.
std::string make_token() {
  std::array<std::uint8_t, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw Failure(EX_OSERR, "the system gives no random bytes for the viewer's address");
  }
  std::string token;
  for (const auto byte : bytes) {
    token += "0123456789abcdef"[byte >> 4];
    token += "0123456789abcdef"[byte & 0x0F];
  }
  return token;
}

// Takes as long for any text of the same length.
bool same(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  unsigned difference = 0;
  for (std::size_t i = 0; i < a.size(); i++) difference |= static_cast<unsigned>(a[i]) ^ static_cast<unsigned>(b[i]);
  return difference == 0;
}

template <typename Number>
std::optional<Number> parameter(const httplib::Request& request, const char* name) {
  if (!request.has_param(name)) return {};
  const auto text = request.get_param_value(name);
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw Failure(EX_USAGE, std::string(name) + ": " + in_quotes(text) + " is no number");
  }
  return value;
}

std::uint64_t needed(const httplib::Request& request, const char* name) {
  const auto value = parameter<std::uint64_t>(request, name);
  if (!value) throw Failure(EX_USAGE, std::string(name) + " is missing");
  return *value;
}

Choice choice_of(const httplib::Request& request) {
  Choice choice;
  choice.filter = request.get_param_value("filter");
  if (choice.filter.find_first_not_of(" \t\n") == std::string::npos) choice.filter.clear();
  if (const auto time = parameter<std::int64_t>(request, "after")) choice.after = *time;
  if (const auto time = parameter<std::int64_t>(request, "before")) choice.before = *time;
  return choice;
}

// A scan that takes no time is waited for, so that the page need not ask twice.
template <typename Done>
void wait_shortly(Done done) {
  using namespace std::chrono_literals;
  const auto end = std::chrono::steady_clock::now() + 100ms;
  while (!done() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(2ms);
}

void put_flag(Output& out, std::string_view key_in_quotes, bool value) {
  out.append(key_in_quotes);
  out.append(value ? ":true" : ":false");
}

const char* media_type(std::string_view name) {
  constexpr std::pair<std::string_view, const char*> kTypes[] = {{".html", "text/html; charset=utf-8"},
                                                                 {".js", "text/javascript; charset=utf-8"},
                                                                 {".css", "text/css; charset=utf-8"},
                                                                 {".svg", "image/svg+xml"},
                                                                 {".woff2", "font/woff2"},
                                                                 {".png", "image/png"},
                                                                 {".json", kJson}};
  for (const auto& [end, type] : kTypes) {
    if (name.ends_with(end)) return type;
  }
  return "application/octet-stream";
}

// Where in UTF-16, as browsers count, the byte at `position` is.
std::size_t utf16_position(std::string_view utf8, std::size_t position) {
  std::size_t count = 0;
  for (const char c : utf8.substr(0, position)) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) count += byte >= 0xF0 ? 2 : 1;
  }
  return count;
}

void refuse(httplib::Response& response, int status, const std::string& message) {
  response.status = status;
  response.set_content("{\"message\":" + json_string(message) + "}", kJson);
}

}  // namespace

ViewServer::ViewServer(FrameStore& store, NameBoard& names, const ViewSettings& settings, int port, std::string assets)
    : store_(store),
      names_(names),
      settings_(settings),
      assets_(std::move(assets)),
      token_(make_token()),
      door_("/" + make_token()) {
  constexpr std::size_t kLongestBody = 65536;
  constexpr std::size_t kRequests = 100000;  // on one connection
  server_.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  server_.set_payload_max_length(kLongestBody);
  server_.set_tcp_nodelay(true);
  server_.set_keep_alive_max_count(kRequests);
  server_.set_keep_alive_timeout(1);  // seconds, which stopping may have to wait for
  // Not SO_REUSEPORT, by which another program of the user's could listen with us.
  server_.set_socket_options([](socket_t socket) {
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
  server_.set_default_headers({{"Content-Security-Policy",
                                "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
                                "img-src 'self' data:; font-src 'self'; base-uri 'none'; frame-ancestors 'none'; "
                                "form-action 'none'"},
                               {"X-Content-Type-Options", "nosniff"},
                               {"Referrer-Policy", "no-referrer"},
                               {"Cross-Origin-Resource-Policy", "same-origin"},
                               {"Cache-Control", "no-store"}});
  // The library would compress for seconds what is sent within this machine; the request is its own, and not const.
  server_.set_pre_routing_handler([](const Request& request, Response&) {
    const_cast<Request&>(request).headers.erase("Accept-Encoding");
    return httplib::Server::HandlerResponse::Unhandled;
  });
  const auto handler = [this](const Request& request, Response& response) { answer(request, response); };
  server_.Get(".*", handler).Put(".*", handler).Post(".*", handler);

  const bool bound =
      port == 0 ? (port = server_.bind_to_any_port(kLoopback)) > 0 : server_.bind_to_port(kLoopback, port);
  if (!bound) throw Failure(EX_UNAVAILABLE, "port " + std::to_string(port) + " of the loopback interface is taken");
  hosts_ = {kLoopback + (":" + std::to_string(port)), "localhost:" + std::to_string(port)};
  address_ = "http://" + hosts_[0] + "/" + token_ + "/";
  door_address_ = "http://" + hosts_[0] + door_;
}

void ViewServer::serve() {
  server_.listen_after_bind();
  served_ = true;
}

// The server is deaf to stop() until it has begun.
void ViewServer::stop() {
  while (!server_.is_running() && !served_) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  server_.stop();
}

// Pages of other hosts reach us under another name (a name that they let stand for 127.0.0.1), or tell their own
// origin.
bool ViewServer::from_here(const Request& request) const {
  const auto host = request.get_header_value("Host");
  if (request.get_header_value_count("Host") != 1 || std::find(hosts_.begin(), hosts_.end(), host) == hosts_.end()) {
    return false;
  }
  return !request.has_header("Origin") || request.get_header_value("Origin") == "http://" + host;
}

bool ViewServer::knows_token(std::string_view path) const {
  return path.size() > token_.size() + 1 && path[token_.size() + 1] == '/' &&
         same(path.substr(1, token_.size()), token_);
}

void ViewServer::answer(const Request& request, Response& response) {
  constexpr std::string_view kApi = "api/";
  if (from_here(request) && request.method == "GET" && same(request.path, door_) && !door_used_.exchange(true)) {
    return response.set_redirect("/" + token_ + "/");
  }
  if (!from_here(request) || !knows_token(request.path))
    return refuse(response, 403, "this address is not the one that wirelines view printed");
  auto name = request.path.substr(token_.size() + 2);
  if (!name.starts_with(kApi)) return send_asset(response, name.empty() ? "index.html" : name);
  name.erase(0, kApi.size());
  try {
    if (request.method != "GET" && request.method != "HEAD") return change(request, response, name);
    const std::shared_lock lock(naming_);
    answer_api(request, response, name);
  } catch (const FilterError& error) {
    response.status = name == "check" ? 200 : 400;
    const Json json = {{"ok", false},
                       {"message", error.what()},
                       {"at", utf16_position(request.get_param_value("filter"), error.position())}};
    response.set_content(json.dump(-1, ' ', false, Json::error_handler_t::replace), kJson);
  } catch (const Json::exception&) {
    refuse(response, 400, "what was sent is not the JSON that is wanted here");
  } catch (const Failure& failure) {
    refuse(response,
           failure.exit_code() == EX_USAGE     ? 400
           : failure.exit_code() == EX_NOINPUT ? 404
                                               : 500,
           failure.what());
  }
}

void ViewServer::answer_api(const Request& request, Response& response, std::string_view name) {
  Output out;
  if (name == "state") {
    out.append(state_json(store_, settings_));
  } else if (name == "rows") {
    rows(request, out);
  } else if (name == "row") {
    row(request, out);
  } else if (name == "frame") {
    frame(request, out);
  } else if (name == "check") {
    check(request, out);
  } else if (name == "stats") {
    stats(request, out);
  } else if (name == "timeline") {
    timeline(request, out);
  } else if (name == "names") {
    out.append(names_.json());
  } else {
    return refuse(response, 404, "there is nothing here");
  }
  const auto text = out.text();
  response.set_content(text.data(), text.size(), kJson);
}

void ViewServer::send_asset(Response& response, const std::string& name) const {
  if (!assets_.empty() && name.find("..") == std::string::npos) {
    std::ifstream file(assets_ + "/" + name, std::ios::binary);
    if (!file) return refuse(response, 404, "there is nothing here");
    return response.set_content(std::string(std::istreambuf_iterator<char>(file), {}), media_type(name));
  }
  for (const auto& asset : kAssets) {
    if (asset.name == name) return response.set_content(asset.bytes.data(), asset.bytes.size(), media_type(name));
  }
  refuse(response, 404, "there is nothing here");
}

// A form on another page can send neither this header nor JSON.
void ViewServer::change(const Request& request, Response& response, std::string_view name) {
  if (request.get_header_value("X-Wirelines") != "1" || !request.get_header_value("Content-Type").starts_with(kJson)) {
    return refuse(response, 403, "changes need the header X-Wirelines: 1 and JSON");
  }
  if (request.method == "POST" && name == "pause") {
    store_.pause(Json::parse(request.body).at("paused").get<bool>());
    return response.set_content(state_json(store_, settings_), kJson);
  }
  const bool save = request.method == "POST" && name == "names/save";
  if (!save && (request.method != "PUT" || name != "names")) return refuse(response, 404, "there is nothing here");

  const std::unique_lock lock(naming_);
  rows_.clear();  // filters may ask for names
  tallies_.clear();
  if (save) {
    names_.save();
  } else {
    const auto named = Json::parse(request.body);
    names_.set(named.at("kind").get<std::string>(), named.at("key").get<std::string>(),
               named.at("name").get<std::string>());
  }
  response.set_content(names_.json(), kJson);
}

std::shared_ptr<ChosenRows> ViewServer::chosen_rows(const Choice& choice) {
  const auto add = [](FrameSet& set, const Frame& frame) { set.add(frame.number); };
  return rows_.get(choice, [&] { return std::make_shared<ChosenRows>(store_, choice, settings_.lift_tags, add); });
}

std::shared_ptr<ChosenTally> ViewServer::chosen_tally(const Choice& choice) {
  const auto add = [](Tally& tally, const Frame& frame) { tally.add(frame); };
  const bool lift = settings_.lift_tags;
  auto tally = tallies_.get(choice, [&] { return std::make_shared<ChosenTally>(store_, choice, lift, add, lift); });
  wait_shortly([&] { return tally->caught_up(); });
  return tally;
}

void ViewServer::rows(const Request& request, Output& out) {
  const auto choice = choice_of(request);
  const auto from = parameter<std::uint64_t>(request, "from").value_or(0);
  const auto count = std::min(parameter<std::uint64_t>(request, "count").value_or(100), kMostRows);
  std::uint64_t total = 0;
  bool caught_up = true;
  std::vector<std::uint64_t> numbers;
  const auto complete = store_.state().complete;
  if (choice == Choice{}) {
    total = store_.frames();
    for (auto row = from; row < total && row < from + count; row++) numbers.push_back(row + 1);
  } else {
    const auto chosen = chosen_rows(choice);
    const auto size = [](const FrameSet& set) { return set.size(); };
    wait_shortly([&] { return chosen->caught_up() || chosen->use(size) >= from + count; });
    caught_up = chosen->caught_up();
    chosen->use([&](const FrameSet& set) {
      total = set.size();
      for (auto row = from; row < total && row < from + count; row++) numbers.push_back(set.at(row));
    });
  }
  out.append("{\"total\":");
  out.number(total);
  put_flag(out, ",\"complete\"", complete && caught_up);
  out.append(',');
  rows_json(out, store_, settings_, numbers);
  out.append('}');
}

void ViewServer::row(const Request& request, Output& out) {
  const auto choice = choice_of(request);
  const auto number = needed(request, "n");
  const auto put = [&out](std::uint64_t index) {
    out.append("{\"index\":");
    out.number(index);
    out.append('}');
  };
  if (choice == Choice{}) return put(number == 0 ? 0 : std::min(number - 1, store_.frames()));
  const auto chosen = chosen_rows(choice);
  const auto known = [&] { return chosen->caught_up() || chosen->looked_at() >= number; };
  wait_shortly(known);
  if (!known()) return out.append("{\"index\":-1}");  // not yet
  put(chosen->use([number](const FrameSet& set) { return set.below(number); }));
}

void ViewServer::frame(const Request& request, Output& out) {
  const auto number = needed(request, "n");
  const auto charset =
      request.has_param("charset") ? charset_of(request.get_param_value("charset")) : settings_.charset;
  FrameStore::Reader reader(store_);
  const auto* const frame = reader.at(number);
  if (frame == nullptr) throw Failure(EX_NOINPUT, "there is no frame " + std::to_string(number));
  frame_json(out, *frame, settings_, charset);
}

void ViewServer::check(const Request& request, Output& out) {
  if (const auto choice = choice_of(request); !choice.filter.empty()) const Filter filter(choice.filter);
  out.append("{\"ok\":true}");
}

void ViewServer::stats(const Request& request, Output& out) {
  const auto complete = store_.state().complete;
  const auto tally = chosen_tally(choice_of(request));
  put_flag(out, "{\"complete\"", complete && tally->caught_up());
  Output report;
  const auto top = parameter<std::size_t>(request, "top").value_or(100);
  tally->use([&](const Tally& sums) { write_json(report, sums, top); });
  out.append(',');
  out.append(report.text().substr(1));  // without its brace
}

void ViewServer::timeline(const Request& request, Output& out) {
  constexpr std::size_t kMostBins = 2000;
  const auto bins = std::clamp<std::size_t>(parameter<std::size_t>(request, "bins").value_or(200), 1, kMostBins);
  const auto complete = store_.state().complete;
  const auto tally = chosen_tally(choice_of(request));
  const auto columns = tally->use([&](const Tally& sums) { return sums.timeline.columns(bins); });
  put_flag(out, "{\"complete\"", complete && tally->caught_up());
  out.append(R"(,"start":")");
  out.number(columns.start);
  out.append(R"(","width":)");
  out.number(columns.width);
  const auto list = [&](std::string_view key, std::uint64_t Count::*value) {
    out.append(key);
    bool first = true;
    for (const auto& count : columns.counts) {
      if (!std::exchange(first, false)) out.append(',');
      out.number(count.*value);
    }
  };
  list(",\"frames\":[", &Count::frames);
  list("],\"bytes\":[", &Count::bytes);
  out.append("]}");
}

}  // namespace wirelines::host
