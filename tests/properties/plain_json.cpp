#include "properties/plain_json.h"

#include <fmt/core.h>
#include <strings.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace quenfold::properties {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kEndOfLiteral = " \t\r\n,]}";

class Parser {
 public:
  explicit Parser(std::string_view text) : rest_(text) {}

  PlainJson parseAll() {
    PlainJson value = parse();
    skipBlanks();
    require(rest_.empty());
    return value;
  }

 private:
  static void require(bool condition) {
    if (!condition) {
      throw std::runtime_error("the text is no JSON");
    }
  }

  void skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
  }

  bool accept(char token) {
    skipBlanks();
    if (rest_.empty() || rest_.front() != token) {
      return false;
    }
    rest_.remove_prefix(1);
    return true;
  }

  char take() {
    require(!rest_.empty());
    const char byte = rest_.front();
    rest_.remove_prefix(1);
    return byte;
  }

  PlainJson parse() {
    PlainJson value;
    if (accept('{')) {
      value.kind = PlainJson::Kind::kObject;
      parseMembers(value);
    } else if (accept('[')) {
      value.kind = PlainJson::Kind::kArray;
      parseElements(value);
    } else if (accept('"')) {
      value.kind = PlainJson::Kind::kText;
      value.text = parseText();
    } else {
      const std::size_t end = std::min(rest_.find_first_of(kEndOfLiteral), rest_.size());
      require(end > 0);
      value.text = rest_.substr(0, end);
      rest_.remove_prefix(end);
    }
    return value;
  }

  void parseMembers(PlainJson& object) {
    if (accept('}')) {
      return;
    }
    do {
      require(accept('"'));
      std::string name = parseText();
      require(accept(':'));
      object.members.emplace_back(std::move(name), parse());
    } while (accept(','));
    require(accept('}'));
  }

  void parseElements(PlainJson& array) {
    if (accept(']')) {
      return;
    }
    do {
      array.elements.push_back(parse());
    } while (accept(','));
    require(accept(']'));
  }

  /// Behind the first quote.
  std::string parseText() {
    std::string text;
    for (char byte = take(); byte != '"'; byte = take()) {
      if (byte == '\\') {
        parseEscape(text);
      } else {
        require(static_cast<unsigned char>(byte) >= ' ');
        text += byte;
      }
    }
    return text;
  }

  void parseEscape(std::string& text) {
    constexpr std::string_view kNames = "\"\\/bfnrt";
    constexpr std::string_view kBytes = "\"\\/\b\f\n\r\t";
    const char name = take();
    if (name == 'u') {
      require(rest_.size() >= 4);
      appendCharacter(std::stoul(std::string(rest_.substr(0, 4)), nullptr, 16), text);
      rest_.remove_prefix(4);
      return;
    }
    const std::size_t place = kNames.find(name);
    require(place != std::string_view::npos);
    text += kBytes[place];
  }

  /// Below 0x800: nothing else is written with an escape here.
  static void appendCharacter(unsigned long code, std::string& text) {
    require(code < 0x800);
    if (code < 0x80) {
      text += static_cast<char>(code);
    } else {
      text += static_cast<char>(0xC0 | (code >> 6U));
      text += static_cast<char>(0x80 | (code & 0x3FU));
    }
  }

  std::string_view rest_;
};

}  // namespace

const PlainJson* PlainJson::find(std::string_view name) const {
  for (const auto& [key, value] : members) {
    if (key == name) {
      return &value;
    }
  }
  return nullptr;
}

const PlainJson* PlainJson::findAnyCase(std::string_view name) const {
  for (const auto& [key, value] : members) {
    if (key.size() == name.size() && strncasecmp(key.data(), name.data(), name.size()) == 0) {
      return &value;
    }
  }
  return nullptr;
}

PlainJson* PlainJson::find(std::string_view name) {
  return const_cast<PlainJson*>(std::as_const(*this).find(name));
}

PlainJson* PlainJson::findAnyCase(std::string_view name) {
  return const_cast<PlainJson*>(std::as_const(*this).findAnyCase(name));
}

PlainJson parsePlainJson(std::string_view text) { return Parser(text).parseAll(); }

PlainJson readPlainJson(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return parsePlainJson(bytes.str());
}

std::string inQuotes(std::string_view text) {
  std::string out = "\"";
  for (const char byte : text) {
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += byte;
    } else if (static_cast<unsigned char>(byte) < ' ') {
      out += fmt::format("\\u{:04x}", static_cast<unsigned char>(byte));
    } else {
      out += byte;
    }
  }
  return out + '"';
}

std::string jsonOf(const PlainJson& value) {
  std::string text;
  switch (value.kind) {
    case PlainJson::Kind::kText:
      return inQuotes(value.text);
    case PlainJson::Kind::kArray:
      for (const PlainJson& element : value.elements) {
        text += (text.empty() ? "" : ",") + jsonOf(element);
      }
      return "[" + text + "]";
    case PlainJson::Kind::kObject:
      for (const auto& [name, member] : value.members) {
        text += (text.empty() ? "" : ",") + inQuotes(name) + ":" + jsonOf(member);
      }
      return "{" + text + "}";
    default:
      return value.text;
  }
}

}  // namespace quenfold::properties
