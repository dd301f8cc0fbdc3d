// wirelines view: a trace in the browser.
#include <fcntl.h>
#include <pthread.h>
#include <spawn.h>
#include <unistd.h>
#include <wirelines.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include "frame_store.hpp"
#include "host/command_line.hpp"
#include "host/options.hpp"
#include "host/viewer.hpp"
#include "host/walk.hpp"
#include "name_board.hpp"
#include "server.hpp"

namespace wirelines::host {

namespace {

struct ViewOptions {
  InputOptions input;
  NameOptions names;
  int port = 0;
  bool no_open = false;
  std::string assets;
};

// Signals that end the viewer, which wait from now on, in threads made later too.
sigset_t hold_end_signals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

bool has_display() {
  const auto is_set = [](const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
  };
  return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY");
}

// What goes wrong is not ours to tell: the address is printed anyway.
void open_browser(const std::string& address) {
  std::string program = "xdg-open";
  std::string argument = address;
  char* const arguments[] = {program.data(), argument.data(), nullptr};
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t none;
  sigemptyset(&none);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  (void)posix_spawnp(&child, program.c_str(), &files, &attributes, arguments, environ);
  posix_spawn_file_actions_destroy(&files);
  posix_spawnattr_destroy(&attributes);
}

std::unique_ptr<FrameStore> open_store(const InputOptions& input) {
  if (input.device) return std::make_unique<FrameStore>(input.device, input.live.interface);
  const auto traces = input.traces();
  if (traces.size() > 1) {
    throw Failure(EX_USAGE, "view shows one trace; to see several as one, join them: mergecap -w all.pcapng FILE...");
  }
  return std::make_unique<FrameStore>(traces[0]);
}

// Until a signal comes.
void serve(const ViewOptions& options, FrameStore& store, NameBoard& names, const sigset_t& end_signals, Output& out) {
  ViewServer server(store, names, {options.input.lift_tags, options.input.charset}, options.port, options.assets);
  std::thread thread([&server] { server.serve(); });
  out.append(server.address());
  out.append('\n');
  out.flush();
  if (!options.no_open && has_display()) open_browser(server.door_address());
  int signal = 0;
  sigwait(&end_signals, &signal);
  server.stop();
  thread.join();
}

int view(const ViewOptions& options, Output& out) {
  if (!options.input.filter.empty() && !options.input.device) {
    throw UsageError("-f: only frames of an interface can be chosen here; the page has a filter");
  }
  if (options.input.charset > WIRELINES_EBCDIC)
    throw Failure(EX_USAGE, "--charset raw: the page has no such character set");
  auto store = open_store(options.input);  // a signal that comes now still ends the program by itself
  const auto end_signals = hold_end_signals();
  store->start();
  NameBoard names(options.names, options.input.traces());
  serve(options, *store, names, end_signals, out);
  const auto frames = store->frames();
  store.reset();
  if (options.input.device) options.input.device->tell_counts(frames, "shown", false);
  return finish(out, 0);
}

}  // namespace

void add_view(CLI::App& program, Run& run) {
  auto options = std::make_shared<ViewOptions>();
  auto& app = add_command(program, run, "view", kViewerDescription,
                          "The page is served on this machine alone, at an address that cannot be guessed,\n"
                          "until Ctrl-C.\n"
                          "Examples:\n"
                          "  wirelines view trace.pcap                  list, lines and bytes of a trace\n"
                          "  wirelines view -i eth0                     frames as they come",
                          [options](Output& out) { return view(*options, out); });
  add_source_options(app, options->input);
  add_text(app, "-f,--filter", options->input.filter, "EXPR",
           "Of -i: only frames that this BPF expression lets through");
  add_flag(app, "--no-open", options->no_open, "Print the address, but open no browser");
  add_number(app, "--port", options->port, 1, 65535, "PORT", "Serve at this port of the loopback interface");
  add_charset_option(app, options->input);
  add_lift_option(app, options->input);
  add_name_options(app, options->names);
  add_utc_option(app);
  add_text(app, "--assets", options->assets, "FOLDER", "");  // for those who work on the page
}

}  // namespace wirelines::host
