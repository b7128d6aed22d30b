#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "matrices/port_pattern.h"
#include "matrices/port_tree.h"

namespace quenfold::unpacking {

/// All that the ports of one type of one group have in common. Refers to the tree, which must
/// outlive it.
struct PortFamily {
  std::string_view slot;
  const PortTypeGroup* group = nullptr;
  std::string_view type;
  Range channels;
};

/// Spells the ports of a family one after the other in the same place:
/// "<device>.<slot>.<port>.<type>.ch<channel>". What they share is copied once.
class PortName {
 public:
  /// For names of up to `longest` bytes: none of them makes it allocate any more.
  explicit PortName(std::size_t longest);

  void startFamily(std::string_view device, const PortFamily& family);

  /// Throws what `printPort` throws.
  void startPort(std::int32_t port);

  /// The started port's name on that channel, one of the family's; valid until the next call.
  std::string_view onChannel(std::int32_t channel);

 private:
  std::string text_;  // the longest name fits; what is in it is told by the lengths
  std::string tail_;  // from behind the port number up to ".ch"
  std::size_t front_ = 0;
  std::size_t stem_ = 0;    // up to ".ch"
  std::size_t behind_ = 0;  // bytes kept free for the tail and the longest channel number
  PortPattern pattern_;
};

}  // namespace quenfold::unpacking
