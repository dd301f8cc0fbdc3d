#include "filter.hpp"

#include <algorithm>

#include "filter_tree.hpp"

namespace wirelines::host {

namespace {

bool same_prefix(std::string_view a, std::string_view b, std::size_t bits) {
  const std::size_t whole = bits / 8;
  if (a.substr(0, whole) != b.substr(0, whole)) return false;
  if (bits % 8 == 0) return true;
  return static_cast<unsigned char>(a[whole] ^ b[whole]) >> (8 - bits % 8) == 0;
}

bool equal_folded(std::string_view text, std::string_view wanted) {
  return std::equal(text.begin(), text.end(), wanted.begin(), wanted.end(),
                    [](char a, char b) { return fold(a) == b; });
}

// In UTF-8 no character begins inside another one, so bytes may be compared.
bool contains_folded(std::string_view text, std::string_view wanted) {
  if (text.size() < wanted.size()) return false;
  const auto* const end = text.data() + (text.size() - wanted.size()) + 1;
  for (const auto* at = text.data(); at != end; at++) {
    if (fold(*at) == wanted[0] && equal_folded({at, wanted.size()}, wanted)) return true;
  }
  return false;
}

// Below 0, 0 or above 0, as the frame came before, at or after what is wanted.
int compare_time(const FilterPacket& packet, const Wanted& wanted) {
  const auto& local = packet.scratch.clock.at(whole_seconds(packet.frame));
  const Wanted::Time time = {local.tm_year + 1900,
                             local.tm_mon + 1,
                             local.tm_mday,
                             local.tm_hour,
                             local.tm_min,
                             local.tm_sec,
                             fraction(packet.frame) / wanted.fraction_unit};
  for (std::size_t i = 0; i < wanted.time_parts; i++) {
    if (time[i] != wanted.time[i]) return time[i] < wanted.time[i] ? -1 : 1;
  }
  return 0;
}

bool in_order(Relation relation, int order) {
  switch (relation) {
    case Relation::kLess: return order < 0;
    case Relation::kLessOrEqual: return order <= 0;
    case Relation::kGreater: return order > 0;
    case Relation::kGreaterOrEqual: return order >= 0;
    default: return order == 0;
  }
}

bool holds(const Filter::Node& node, const Wanted& wanted, const FilterValue& value, FilterPacket& packet) {
  switch (wanted.form) {
    case Wanted::Form::kNumbers:
      return in_order(node.relation, value.number < wanted.first ? -1 : value.number > wanted.last ? 1 : 0);
    case Wanted::Form::kAddress:
      return value.bytes.size() == wanted.bytes.size() && same_prefix(value.bytes, wanted.bytes, wanted.bits);
    case Wanted::Form::kTime: return in_order(node.relation, compare_time(packet, wanted));
    case Wanted::Form::kText: {
      const auto text = text_of(*node.field, value, packet);
      return node.relation == Relation::kContains ? contains_folded(text, wanted.bytes)
                                                  : equal_folded(text, wanted.bytes);
    }
  }
  return false;
}

bool holds(const Filter::Node& node, FilterPacket& packet) {
  if (node.field->type == FilterType::kFlag) return node.field->when(packet);
  const auto values = values_of(*node.field, packet);
  if (node.relation == Relation::kPresent || values.empty()) return !values.empty();
  const bool any = std::any_of(values.begin(), values.end(), [&](const FilterValue& value) {
    return std::any_of(node.wanted.begin(), node.wanted.end(),
                       [&](const Wanted& wanted) { return holds(node, wanted, value, packet); });
  });
  return any != (node.relation == Relation::kNotEqual);
}

bool matches(const Filter::Node& node, FilterPacket& packet) {
  const auto part_matches = [&packet](const Filter::Node& part) { return matches(part, packet); };
  switch (node.kind) {
    case Filter::Node::Kind::kAll: return std::all_of(node.parts.begin(), node.parts.end(), part_matches);
    case Filter::Node::Kind::kAny: return std::any_of(node.parts.begin(), node.parts.end(), part_matches);
    case Filter::Node::Kind::kNot: return !matches(node.parts[0], packet);
    case Filter::Node::Kind::kTest: return holds(node, packet);
  }
  return false;
}

}  // namespace

Filter::Filter(std::string_view text) : root_(std::make_shared<Node>(parse_filter(text))) {}

bool Filter::matches(const Frame& frame, FilterScratch& scratch) const {
  scratch.lift.take(frame);
  FilterPacket packet(frame, scratch);
  return host::matches(*root_, packet);
}

}  // namespace wirelines::host
