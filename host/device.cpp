#include "device.hpp"

#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>
#include <thread>
#include <utility>

#include "rights.hpp"

namespace wirelines::host {

namespace {

// The kernel hands frames over when a block is full, or after this long.
constexpr std::chrono::milliseconds kBlockTime(100);

constexpr std::array kEndSignals = {SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t end_signal = 0;  // the one that came

// A signal that comes again has its usual effect, in case we hang in a write.
void catch_end_signals() {
  struct sigaction action {};
  action.sa_handler = [](int signal) { end_signal = signal; };
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  for (const int signal : kEndSignals) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    // nohup stays in effect. A shell script ignores SIGINT for what it runs in the background, but means it by kill.
    if (signal == SIGHUP && before.sa_handler == SIG_IGN) continue;
    sigaction(signal, &action, nullptr);
  }
}

// Waits for `fd`, at most so long; unless already `ending`, also until a signal comes, or not at all when one came just
// before. Whether `fd` is ready.
bool wait_for(int fd, std::chrono::nanoseconds time, bool ending) {
  sigset_t signals;
  sigset_t before;
  sigemptyset(&signals);
  for (const int signal : kEndSignals) sigaddset(&signals, signal);
  sigprocmask(SIG_BLOCK, &signals, &before);
  if (end_signal != 0 && !ending) time = {};
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  const timespec timeout{seconds.count(), static_cast<long>((time - seconds).count())};
  pollfd wait{fd, POLLIN, 0};
  const int ready = ppoll(&wait, 1, &timeout, &before);
  sigprocmask(SIG_SETMASK, &before, nullptr);
  return ready > 0;
}

// The interfaces, with what libpcap knows of them.
class Interfaces {
 public:
  Interfaces() {
    std::array<char, PCAP_ERRBUF_SIZE> error{};
    if (pcap_findalldevs(&first_, error.data()) != 0) {
      throw Failure(EX_OSERR, std::string("interfaces cannot be listed: ") + error.data());
    }
  }
  Interfaces(const Interfaces&) = delete;
  Interfaces& operator=(const Interfaces&) = delete;
  ~Interfaces() { pcap_freealldevs(first_); }

  template <typename Visit>
  void each(Visit visit) const {
    for (const auto* one = first_; one != nullptr; one = one->next) visit(*one);
  }

 private:
  pcap_if_t* first_ = nullptr;
};

Failure no_such_interface(const std::string& name) {
  std::string known;
  Interfaces().each([&known](const pcap_if_t& one) { known += (known.empty() ? "" : ", ") + std::string(one.name); });
  return {EX_NOINPUT, "there is no interface " + in_quotes(name) + "; there are: " + known};
}

// Without permission libpcap does not get as far as finding that an interface is not there.
bool exists(const std::string& name) {
  bool found = if_nametoindex(name.c_str()) != 0;
  Interfaces().each([&](const pcap_if_t& one) { found = found || name == one.name; });
  return found;
}

Failure no_permission(const std::string& name) {
  std::array<char, PATH_MAX> path{};
  const auto size = readlink("/proc/self/exe", path.data(), path.size());
  const std::string program = size > 0 ? std::string(path.data(), static_cast<std::size_t>(size)) : "wirelines";
  return {EX_NOPERM, name + ": no permission to capture; run it with sudo, or let all who may run it capture: " +
                         "sudo setcap cap_net_raw=ep " + in_quotes(program)};
}

}  // namespace

Device::Device(const LiveOptions& options, const std::string& filter, Use use) : options_(options) {
  create();
  activate();
  give_up_rights(options.user, use == Use::kRecord);
  if (use == Use::kDecode) need_link_type(options.interface, pcap_datalink(pcap_.get()));
  if (!filter.empty()) set_filter(filter);
  catch_end_signals();
  if (options.seconds > 0) end_ = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
}

void Device::create() {
  std::array<char, PCAP_ERRBUF_SIZE> error{};
  pcap_.reset(pcap_create(options_.interface.c_str(), error.data()));
  if (!pcap_) throw Failure(EX_NOINPUT, options_.interface + ": " + error.data());
  pcap_set_snaplen(pcap_.get(), static_cast<int>(options_.snaplen));
  pcap_set_promisc(pcap_.get(), options_.no_promiscuous ? 0 : 1);
  pcap_set_timeout(pcap_.get(), static_cast<int>(kBlockTime.count()));
  pcap_set_buffer_size(pcap_.get(), static_cast<int>(options_.buffer) << 20);
  // Where a device has no such times, libpcap stays with microseconds.
  pcap_set_tstamp_precision(pcap_.get(), PCAP_TSTAMP_PRECISION_NANO);
}

void Device::activate() {
  const auto& name = options_.interface;
  const int result = pcap_activate(pcap_.get());
  const std::string reason = pcap_geterr(pcap_.get());
  switch (result) {
    case 0: break;
    case PCAP_ERROR_PERM_DENIED:
    case PCAP_ERROR_PROMISC_PERM_DENIED:
      if (exists(name)) throw no_permission(name);
      [[fallthrough]];
    case PCAP_ERROR_NO_SUCH_DEVICE: throw no_such_interface(name);
    case PCAP_ERROR_IFACE_NOT_UP:
      throw Failure(EX_NOINPUT, name + ": the interface is down; to bring it up: sudo ip link set " + name + " up");
    default:
      const auto what = name + ": " + pcap_statustostr(result) + (reason.empty() ? "" : " (" + reason + ")");
      if (result < 0) throw Failure(EX_NOINPUT, what);
      complain(what);  // a warning
  }
  index_ = if_nametoindex(name.c_str());
  nanoseconds_ = pcap_get_tstamp_precision(pcap_.get()) == PCAP_TSTAMP_PRECISION_NANO;
  std::array<char, PCAP_ERRBUF_SIZE> error{};
  if (pcap_setnonblock(pcap_.get(), 1, error.data()) != 0) throw Failure(EX_OSERR, name + ": " + error.data());
}

void Device::set_filter(const std::string& expression) {
  bpf_program filter{};
  bool done = pcap_compile(pcap_.get(), &filter, expression.c_str(), 1, PCAP_NETMASK_UNKNOWN) == 0;
  if (done) {
    done = pcap_setfilter(pcap_.get(), &filter) == 0;
    pcap_freecode(&filter);
  }
  if (!done) throw Failure(EX_USAGE, "--filter " + in_quotes(expression) + ": " + pcap_geterr(pcap_.get()));
}

bool Device::next(Frame& frame) {
  pcap_pkthdr* header = nullptr;
  const u_char* data = nullptr;
  for (;;) {
    notice_end();
    const int result = pcap_next_ex(pcap_.get(), &header, &data);
    if (result == 1) break;
    if (result < 0) {
      if (std::exchange(failed_, true)) {
        throw Failure(EX_NOINPUT, options_.interface + ": the capture ended: " + pcap_geterr(pcap_.get()));
      }
      std::this_thread::sleep_for(kBlockTime * 2);  // for the frames from before, which the kernel still holds
    } else if (!wait()) {
      return false;
    }
  }
  const auto fraction = header->ts.tv_usec * (nanoseconds_ ? 1 : 1000);
  if (ending_ && (std::chrono::seconds(header->ts.tv_sec) + std::chrono::nanoseconds(fraction) > last_frame_time_ ||
                  std::chrono::steady_clock::now() > patience_)) {
    return false;
  }
  frame = {.number = ++number_,
           .trace = &options_.interface,
           .data = data,
           .length = header->caplen,
           .original_length = header->len,
           .seconds = header->ts.tv_sec,
           .nanoseconds = static_cast<std::uint32_t>(fraction),
           .offset = 0,
           .link_type = pcap_datalink(pcap_.get())};
  if (number_ % (1U << 20U) == 0) count();
  return true;
}

// The kernel may still hold frames from before the end was asked for; what comes later is not waited for, nor a reader
// of ours that is too slow for what there is.
void Device::notice_end() {
  constexpr std::chrono::seconds kPatience(2);
  if (ending_ || (end_signal == 0 && (end_ == SteadyTime::max() || std::chrono::steady_clock::now() < end_))) return;
  ending_ = true;
  last_frame_time_ = std::chrono::system_clock::now().time_since_epoch();
  patience_ = std::chrono::steady_clock::now() + kPatience;
}

// False when nothing is to be waited for any more. libpcap would wait for ever for an interface that went down.
bool Device::wait() {
  constexpr std::chrono::nanoseconds kLook = std::chrono::seconds(1);
  if (!before_wait_()) return false;
  std::chrono::nanoseconds time = kBlockTime * 2;
  if (!ending_) time = std::min(kLook, std::max<std::chrono::nanoseconds>(end_ - std::chrono::steady_clock::now(), {}));
  const int fd = pcap_get_selectable_fd(pcap_.get());
  if (wait_for(fd, time, ending_)) return true;
  if (index_ == 0 || ending_) return !ending_;
  ifreq request{};
  if (if_indextoname(index_, request.ifr_name) == nullptr || ioctl(fd, SIOCGIFFLAGS, &request) != 0) {
    throw Failure(EX_NOINPUT, options_.interface + ": the capture ended: the interface has gone");
  }
  if ((request.ifr_flags & IFF_UP) == 0) {
    throw Failure(EX_NOINPUT, options_.interface + ": the capture ended: the interface went down");
  }
  return true;
}

// libpcap's numbers go round; to be called often enough.
void Device::count() {
  pcap_stat now{};
  if (pcap_stats(pcap_.get(), &now) != 0) return;
  received_ += now.ps_recv - last_.ps_recv;
  dropped_ += now.ps_drop - last_.ps_drop;
  dropped_by_interface_ += now.ps_ifdrop - last_.ps_ifdrop;
  last_ = now;
}

std::uint64_t Device::dropped() {
  count();
  return dropped_ + dropped_by_interface_;
}

void Device::tell_counts(std::uint64_t frames, std::string_view done, bool quiet) {
  count();
  if (!quiet) {
    complain(std::to_string(frames) + " frame(s) " + std::string(done) + ", " + std::to_string(received_) +
             " received by the filter, " + std::to_string(dropped_) + " dropped by the kernel, " +
             std::to_string(dropped_by_interface_) + " dropped by the interface");
  } else if (dropped_by_interface_ > 0) {
    complain(std::to_string(dropped_by_interface_) + " frame(s) dropped by the interface");
  }
  if (dropped_ > 0) {
    complain(std::to_string(dropped_) + " frame(s) lost: the kernel's buffer was full; a greater --buffer than " +
             std::to_string(options_.buffer) + " or a narrower --filter may help");
  }
}

void list_interfaces(Output& out) {
  Interfaces().each([&out](const pcap_if_t& one) {
    constexpr std::size_t kColumn = 16;
    const std::string name = printable(one.name);
    std::string about = (one.flags & PCAP_IF_UP) != 0 ? "up" : if_nametoindex(one.name) != 0 ? "down" : "";
    for (const auto* address = one.addresses; address != nullptr; address = address->next) {
      const int family = address->addr->sa_family;
      std::array<char, NI_MAXHOST> text{};
      const socklen_t size = family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
      if ((family == AF_INET || family == AF_INET6) &&
          getnameinfo(address->addr, size, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) == 0) {
        about += std::string(about.empty() ? "" : " ") + text.data();
      }
    }
    if (one.description != nullptr) about += (about.empty() ? "" : "  ") + printable(one.description);
    out.append(name);
    out.blanks(std::max(kColumn, name.size() + 1) - name.size());
    out.append(about);
    out.append('\n');
  });
}

}  // namespace wirelines::host
