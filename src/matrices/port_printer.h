#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "matrices/packed_reader.h"

namespace quenfold::unpacking {

/// A pattern may pad its number to at most this many characters, all its fields together.
inline constexpr std::uint64_t kMaxPatternWidth = 4096;

/// The characters of the longest decimal number from `first` to `last`.
std::uint64_t longestNumber(std::int32_t first, std::int32_t last);

/// A number of bytes that no port from `first` to `last` exceeds with this pattern, whether it is
/// well-formed or not; for patterns without a colon in their fields the length of the longest.
/// Throws a length error "port pattern too wide: more than 4096" for the sum of its widths.
std::uint64_t longestPortText(std::string_view pattern, std::int32_t first, std::int32_t last);

/// A format pattern with the port number as its one argument, taken apart once for many ports:
/// text, text around one "{}", or what only the formatter understands. Views the pattern's text.
struct PortPattern {
  enum class Kind { kText, kNumber, kFormat };

  Kind kind = Kind::kText;
  std::string_view front;  // before the number; all of it without one, or for the formatter
  std::string_view back;   // behind it
};

PortPattern splitPattern(std::string_view text);

/// Appends the port of that number. Throws the formatter's error for stray braces.
void appendPort(std::string& text, const PortPattern& pattern, std::int32_t port);

/// The ports of one type of a group: each of its port numbers on each of the type's channels.
/// Refers to the tree, which must outlive it.
struct PortBlock {
  std::string_view slot;
  const PortTypeGroup* group = nullptr;
  std::string_view type;
  Range channels;
};

/// Spells the ports of a block one after the other in the same text:
/// "<device>.<slot>.<port>.<type>.ch<channel>". What they share is copied once.
class PortPrinter {
 public:
  /// For names of up to `longest` bytes: none of them makes it allocate any more.
  explicit PortPrinter(std::size_t longest);

  void startBlock(std::string_view device, const PortBlock& block);

  /// Throws what `appendPort` throws.
  void startPort(std::int32_t port);

  /// The started port's name on that channel; valid until the next call.
  std::string_view onChannel(std::int32_t channel);

 private:
  std::string text_;
  std::string tail_;      // from behind the port up to ".ch"
  std::size_t head_ = 0;  // up to the port
  std::size_t stem_ = 0;  // up to ".ch"
  PortPattern pattern_;
};

}  // namespace quenfold::unpacking
