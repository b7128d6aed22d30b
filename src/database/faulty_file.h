#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

// Errors of a file that tell a person where to look.

namespace quenfold::database {

/// "<path>:<line>:<column>: no JSON" for the byte at that offset of what `readFile` gives for the
/// path. Lines and columns (bytes) count from 1. Reads the file again.
std::runtime_error noJson(const std::string& path, std::size_t offset);

/// What to throw for a file whose text, as `readFile` gives it, led to that failure: `noJson` where
/// the text is none, and otherwise "<path>: <message>".
std::runtime_error faultOf(const std::string& path, std::string text,
                           const std::runtime_error& failure);

}  // namespace quenfold::database
