// The viewer's server: on the loopback interface, for whoever knows the address it made up.
#pragma once

#include <httplib.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

#include "frame_store.hpp"
#include "name_board.hpp"
#include "pages.hpp"
#include "scan.hpp"

namespace wirelines::host {

class ViewServer {
 public:
  // `assets`: a folder with the page's files, or empty for those in the program. Throws Failure when the port (0: any)
  // cannot be had.
  ViewServer(FrameStore& store, NameBoard& names, const ViewSettings& settings, int port, std::string assets);

  [[nodiscard]] const std::string& address() const { return address_; }

  // Leads there once: for a command line, which other users of the machine can see.
  [[nodiscard]] const std::string& door_address() const { return door_address_; }

  void serve();  // until stop() is called
  void stop();   // from another thread

 private:
  using Request = httplib::Request;
  using Response = httplib::Response;

  [[nodiscard]] bool from_here(const Request& request) const;
  [[nodiscard]] bool knows_token(std::string_view path) const;
  void answer(const Request& request, Response& response);
  void answer_api(const Request& request, Response& response, std::string_view name);
  void send_asset(Response& response, const std::string& name) const;
  void change(const Request& request, Response& response, std::string_view name);

  void rows(const Request& request, Output& out);
  void row(const Request& request, Output& out);
  void frame(const Request& request, Output& out);
  static void check(const Request& request, Output& out);
  void stats(const Request& request, Output& out);
  void timeline(const Request& request, Output& out);

  std::shared_ptr<ChosenRows> chosen_rows(const Choice& choice);
  std::shared_ptr<ChosenTally> chosen_tally(const Choice& choice);

  FrameStore& store_;
  NameBoard& names_;
  const ViewSettings settings_;
  const std::string assets_;
  const std::string token_;
  const std::string door_;
  std::atomic_bool door_used_ = false;
  std::string address_;
  std::string door_address_;
  std::vector<std::string> hosts_;  // what browsers may call us

  std::shared_mutex naming_;  // held alone while names change
  Recent<ChosenRows> rows_;
  Recent<ChosenTally> tallies_;
  httplib::Server server_;
  std::atomic_bool served_ = false;
};

}  // namespace wirelines::host
