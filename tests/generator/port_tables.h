#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quenfold::generator {

enum class Direction { source, destination, neither };

/// What stands before and behind the port number.
struct PortPrefix {
  std::string_view open;
  std::string_view close;
  Direction direction;
};

/// One prefix of every kind. Those of a direction end at the bracket: logical inputs and outputs
/// can name no others.
inline constexpr std::array<PortPrefix, 18> kPortPrefixes{{
    {"in[", "]", Direction::source},
    {"out[", "]", Direction::destination},
    {"AUXA-in[", "]", Direction::source},
    {"AUXA-out[", "]", Direction::destination},
    {"AUXB-in[", "]", Direction::source},
    {"AUXB-out[", "]", Direction::destination},
    {"disconnect[", "]", Direction::source},
    {"passthrough[", "]", Direction::source},
    {"layout:quad[", "]", Direction::source},
    {"mixer-out[", "]", Direction::source},
    {"mixerd-out[", "]", Direction::source},
    {"virt-in[", "]", Direction::source},
    {"pip1-in[", "]", Direction::destination},
    {"head1-in[", "]", Direction::destination},
    {"mixer-in[", "]", Direction::destination},
    {"virt-out[", "]", Direction::destination},
    {"monitor[", "]", Direction::neither},
    {"probe[", "]-tap", Direction::neither},
}};

/// A signal type, how often a port has it and with how many channels at most.
struct PortType {
  std::string_view name;
  std::uint32_t percent;
  std::uint32_t maxChannels;
};

/// In ascending byte order of the name.
inline constexpr std::array<PortType, 7> kPortTypes{{
    {"aes", 6, 8},
    {"audio", 65, 15},
    {"intercom", 5, 4},
    {"madi", 5, 15},
    {"meta", 35, 3},
    {"timecode", 8, 1},
    {"video", 70, 1},
}};

/// Channels run from 0 to this number.
inline constexpr std::uint32_t kLastChannel = 15;

}  // namespace quenfold::generator
