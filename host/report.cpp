#include "report.hpp"

#include "labels.hpp"

namespace wirelines::host {

namespace {

void sort(Protocol& protocol) {
  std::sort(protocol.parts.begin(), protocol.parts.end(), [](const Protocol& a, const Protocol& b) {
    return a.count.bytes != b.count.bytes ? a.count.bytes > b.count.bytes : a.name < b.name;
  });
  for (auto& part : protocol.parts) sort(part);
}

}  // namespace

Protocol protocol_tree(const Tally& tally) {
  Protocol root{"", tally.total, {}};
  for (const auto& [key, count] : tally.protocols.entries()) {
    auto* place = &root;
    for (const auto& name : path(ProtocolKey::unpack(key))) {
      auto& parts = place->parts;
      const auto found =
          std::find_if(parts.begin(), parts.end(), [&name](const Protocol& part) { return part.name == name; });
      place = found != parts.end() ? &*found : &parts.emplace_back(Protocol{name, {}, {}});
      place->count += count;
    }
  }
  sort(root);
  if (tally.protocols_missed.frames > 0) root.parts.push_back({"Not entered", tally.protocols_missed, {}});
  return root;
}

}  // namespace wirelines::host
