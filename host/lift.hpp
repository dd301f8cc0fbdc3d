// Frames as the library takes them: Ethernet without VLAN tags. What another link layer captured gets an Ethernet
// header made up here, tags are taken out, and what the library says of such a frame is put back in terms of the real
// one.
#pragma once

#include <wirelines.h>

#include <cstdint>
#include <vector>

#include "trace.hpp"

namespace wirelines::host {

// Whether frames of this link type (DLT_...) can be decoded.
bool can_lift(int link_type);

struct Tag {
  std::uint32_t first, last;  // its bytes in the real frame
  std::uint16_t type;         // 0x8100 802.1Q, 0x88A8 802.1ad
  std::uint16_t control;      // priority, drop eligible, VLAN

  [[nodiscard]] std::uint32_t vlan() const { return control & 0x0FFFU; }
};

class Lift {
 public:
  explicit Lift(bool tags) : lift_tags_(tags) {}

  // Makes this the frame that everything else here is about. Both it and this object must stay as they are meanwhile.
  void take(const Frame& frame);

  // What to hand to the library.
  [[nodiscard]] const std::uint8_t* data() const { return data_; }
  [[nodiscard]] std::int32_t length() const { return static_cast<std::int32_t>(length_); }

  // The tags that were taken out, the outermost first.
  [[nodiscard]] const std::vector<Tag>& tags() const { return tags_; }

  // Whether the Ethernet header is made up.
  [[nodiscard]] bool made_up() const { return frame_->link_type != DLT_EN10MB; }

  // Whether the frame is one of PPP, and the PPPoE session around it made up too.
  [[nodiscard]] bool in_session() const;

  // Corrects the lines of AnalyzeOutput: ranges and "[Length]" become those of the real frame, lines for what was
  // lifted follow those of the data link. Takes and returns the index of the top line.
  std::uint32_t correct(LineList& list, std::uint32_t top_line) const;

  // Corrects the offsets of CheckPacket.
  void correct(PacketSummary& summary) const;

 private:
  void make_up_header();
  void make_up_session();
  [[nodiscard]] std::uint32_t padding() const;
  void take_tags();
  void add_lines(LineList& list) const;
  void correct_range(DisplayLine& line) const;
  [[nodiscard]] std::uint32_t own_header() const;

  bool lift_tags_;
  const Frame* frame_ = nullptr;
  const std::uint8_t* data_ = nullptr;
  std::uint32_t length_ = 0;
  // The first seam_ bytes of data_ are those of the frame, or made up; then come the frame's from rest_ on.
  std::uint32_t seam_ = 0;
  std::uint32_t rest_ = 0;
  std::vector<Tag> tags_;
  std::vector<std::uint8_t> bytes_;  // behind data_ when it is not the frame itself
};

}  // namespace wirelines::host
