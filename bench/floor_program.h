#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quenfold::floor {

/// The one thing in which the floor programs differ: does what the arguments ask for. Returns the
/// bytes worked on, which go to standard output. Throws std::exception with the message.
std::size_t measure(const std::vector<std::string>& arguments);

}  // namespace quenfold::floor
