// Capturing takes a driver that Windows does not come with: here interfaces are refused, and traces read.
#include "host/device.hpp"

#include "host/failure.hpp"
#include "host/recorder.hpp"
#include "host/rights.hpp"

namespace wirelines::host {

namespace {

[[noreturn]] void refuse() {
  throw Failure(EX_USAGE,
                "on Windows wirelines reads traces only; record one with another program, or capture on Linux");
}

}  // namespace

Device::Device(const LiveOptions& options, const std::string& /*filter*/, Use /*use*/) : options_(options) {
  refuse();
}

bool Device::next(Frame& /*frame*/) {
  return false;
}

void Device::tell_counts(std::uint64_t /*frames*/, std::string_view /*done*/, bool /*quiet*/) {}

void list_interfaces(Output& /*out*/) {
  refuse();
}

TraceFile::TraceFile(const std::string& name, pcap_t* /*pcap*/) : name_(name) {}
void TraceFile::flush() {}

Recorder::Recorder(const RecordOptions& options, pcap_t* pcap) : options_(options), pcap_(pcap), nanoseconds_(false) {}
void Recorder::write(const Frame& /*frame*/) {}

void give_up_capabilities() {}

}  // namespace wirelines::host
