#include "generator/matrices_text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quenfold::generator {
namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 18U;

/// In a messy document every token is followed by one of these in turn.
constexpr std::array<std::string_view, 7> kWhiteSpace{"", " ", "\n", "", "\t", "  ", "\r\n    "};

class TokenWriter {
 public:
  TokenWriter(const TextSink& sink, bool spaced) : sink_(sink), spaced_(spaced) {}

  void token(std::string_view text) {
    text_ += text;
    space();
  }

  void string(std::string_view text) {
    appendJsonString(text_, text);
    space();
  }

  void key(std::string_view name) {
    string(name);
    token(":");
  }

  void number(std::int32_t value) { token(std::to_string(value)); }

  void flush(std::size_t fill) {
    if (text_.size() >= fill) {
      sink_(text_);
      text_.clear();
    }
  }

 private:
  void space() {
    if (spaced_) {
      text_ += kWhiteSpace[turn_];
      turn_ = (turn_ + 1) % kWhiteSpace.size();
    }
  }

  const TextSink& sink_;
  bool spaced_;
  std::string text_;
  std::size_t turn_ = 0;
};

/// A member that no reader knows, with the comma behind it.
void writeUnknownMember(TokenWriter& out) {
  out.key("note");
  out.token("{");
  out.key("ports");
  out.token("[");
  out.token("null");
  out.token("]");
  out.token("}");
  out.token(",");
}

void writePort(TokenWriter& out, const Plant& plant, const PortEntry& entry, std::string& key) {
  key.clear();
  appendPortKey(key, plant, entry);
  out.token("{");
  out.key("port");
  out.string(key);
  out.token(",");
  if (plant.messy && entry.number % 5 == 1) {
    writeUnknownMember(out);
  }
  out.key("label");
  out.string(entry.label == 0 ? key : plant.labels[entry.label]);
  out.token("}");
}

void writePorts(TokenWriter& out, const Plant& plant, const Matrix& matrix) {
  std::string key;
  out.token("[");
  for (const PortEntry& entry : matrix.ports) {
    if (&entry != &matrix.ports.front()) {
      out.token(",");
    }
    writePort(out, plant, entry, key);
    out.flush(kPieceSize);
  }
  out.token("]");
}

void writeMatrix(TokenWriter& out, const Plant& plant, const Matrix& matrix) {
  out.token("{");
  out.key("id");
  out.number(matrix.id);
  out.token(",");
  if (matrix.type) {
    out.key("type");
    out.number(*matrix.type);
    out.token(",");
  }
  out.key("name");
  out.string(matrix.name);
  out.token(",");
  out.key("serialnumber");
  out.string(matrix.serial);
  out.token(",");
  out.key("ports");
  writePorts(out, plant, matrix);
  out.token("}");
}

void writeConfig(TokenWriter& out, const Plant& plant) {
  out.token("{");
  out.key("version");
  out.number(8);
  out.token(",");
  out.key("Matrices");
  out.token("[");
  for (const Matrix& matrix : plant.matrices) {
    if (&matrix != &plant.matrices.front()) {
      out.token(",");
    }
    writeMatrix(out, plant, matrix);
  }
  out.token("]");
  out.token("}");
}

}  // namespace

void writeMatrices(const Plant& plant, const TextSink& sink) {
  TokenWriter out(sink, plant.messy);
  out.token("{");
  if (plant.messy) {
    writeUnknownMember(out);
  }
  out.key("Config");
  writeConfig(out, plant);
  out.token("}");
  out.flush(0);
}

}  // namespace quenfold::generator
