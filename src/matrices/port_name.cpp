#include "matrices/port_name.h"

#include <algorithm>
#include <charconv>

namespace quenfold::unpacking {

PortName::PortName(std::size_t longest) : text_(longest, '\0') { tail_.reserve(longest); }

void PortName::startFamily(std::string_view device, const PortFamily& family) {
  pattern_ = splitPattern(family.group->port);
  char* end = text_.data();
  for (const std::string_view part :
       {device, std::string_view("."), family.slot, std::string_view("."), pattern_.front}) {
    end = std::copy(part.begin(), part.end(), end);
  }
  front_ = static_cast<std::size_t>(end - text_.data());
  tail_.assign(pattern_.back).append(".").append(family.type).append(".ch");
  behind_ = tail_.size() +
            static_cast<std::size_t>(longestNumber(family.channels.first, family.channels.last));
}

void PortName::startPort(std::int32_t port) {
  char* const limit = text_.data() + text_.size() - behind_;
  char* const number = text_.data() + front_;
  char* const end = std::copy(tail_.begin(), tail_.end(), printPort(pattern_, port, number, limit));
  stem_ = static_cast<std::size_t>(end - text_.data());
}

std::string_view PortName::onChannel(std::int32_t channel) {
  const char* const end =
      std::to_chars(text_.data() + stem_, text_.data() + text_.size(), channel).ptr;
  return {text_.data(), static_cast<std::size_t>(end - text_.data())};
}

}  // namespace quenfold::unpacking
