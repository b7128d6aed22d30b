#pragma once

#include <string>
#include <string_view>

namespace quenfold::floor {

/// The bytes of the file as they are. Throws a runtime error that names the path.
std::string readBytes(const std::string& path);

/// Creates or truncates the file. Throws a runtime error that names the path.
void writeBytes(const std::string& path, std::string_view text);

}  // namespace quenfold::floor
