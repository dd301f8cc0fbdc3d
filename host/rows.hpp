// Frames as rows of a list, from what the classifier tells of them: no line is made.
#pragma once

#include <wirelines.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "clock.hpp"
#include "lift.hpp"
#include "output.hpp"
#include "text.hpp"
#include "trace.hpp"

namespace wirelines::host {

struct Packet;

class RowPrinter {
 public:
  RowPrinter(Output& out, bool color, bool lift_tags = true) : out_(out), color_(color), lift_(lift_tags) {}

  // Number, time of day, source, destination, protocol, length, and what else matters; in columns, which a value that
  // is too long pushes to the right. Addresses and ports are shown by the user's names where they have one.
  void row(const Frame& frame);

  // The same columns for a program: nothing is filled up, and a tab stands between them.
  void cells(const Frame& frame);

 private:
  // "443 HTTPS", of TCP or UDP.
  struct Port {
    std::uint16_t port = 0;
    std::uint8_t protocol = 0;
    std::string text;
    std::size_t digits = 0;

    [[nodiscard]] std::string_view number() const { return std::string_view(text).substr(0, digits); }
  };

  void columns(const Frame& frame);
  [[nodiscard]] char separator() const { return tabs_ ? '\t' : ' '; }
  void number_and_time(const Frame& frame);
  void addresses(const Packet& packet);
  void protocol_and_length(const Packet& packet, bool wrong);
  void note(const Packet& packet);
  void tags();
  void verdicts(int errors);

  void ip_note(const Packet& packet);
  void fragment_note(const Packet& packet);
  void ports_note(const PacketSummary& summary);
  const Port& port(std::uint16_t port, std::uint8_t protocol);
  void icmp_note(const PacketSummary& summary);
  void arp_note(const Packet& packet);
  void pppoe_note(const Packet& packet);
  void ipx_note(const PacketSummary& summary);
  void link_note(const Packet& packet);
  void sap_note(const Packet& packet);
  void type_note(std::string_view label, std::uint16_t type);

  template <typename Label>
  void address_columns(const Label& source, const Label& destination);
  void name(std::string_view name);
  void hex(std::uint32_t value, int digits);

  Output& out_;
  bool color_;
  bool tabs_ = false;
  Lift lift_;
  Text text_;
  Clock clock_;
  std::array<Port, 256> ports_;
  std::int64_t second_ = -1;  // that second_text_ stands for
  char second_text_[9];       // "12:34:56."
};

}  // namespace wirelines::host
