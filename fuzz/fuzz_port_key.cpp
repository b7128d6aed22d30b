// The input is port keys, one a line; each is read as an ID key as well.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/text.h"
#include "json/cjson_tree.h"
#include "logicalio/port_dict.h"
#include "logicalio/port_key.h"
#include "target.h"

namespace quenfold {
namespace {

struct Registered {
  std::string key;  // in its canonical spelling
  std::string idKey;
  bool negative = false;
};

std::string canonical(const PortKeyText& fields) {
  std::string text = printPortKey(fields);
  const std::optional<PortKeyText> again = scanPortKey(text);
  fuzz::require(again.has_value(), "a printed port key scans");
  fuzz::requireEqual(printPortKey(*again), text, "a printed port key scans to its fields");
  return text;
}

void checkIdKey(std::string_view line) {
  const std::string printed = printIdKey(scanIdKey(line));
  fuzz::requireEqual(printIdKey(scanIdKey(printed)), printed,
                     "a printed ID key scans to its numbers");
}

std::vector<Registered> registerAll(std::string_view input, PortDict& dict) {
  std::vector<Registered> registered;
  for (const std::string& piece : split(input, '\n')) {
    // Keys come from JSON strings, which end at a zero byte.
    const std::string line = piece.substr(0, piece.find('\0'));
    checkIdKey(line);
    std::string idKey = "none";
    dict.registerPortKey(line, idKey);
    const std::optional<PortKeyText> fields = scanPortKey(line);
    fuzz::require(fields.has_value() == (idKey != "none"), "what scans is registered");
    if (fields) {
      registered.push_back({canonical(*fields), idKey, fields->ch < 0 || fields->port_id < 0});
    }
  }
  return registered;
}

/// Through its text and back.
PortDict reloaded(const PortDict& dict) {
  const CJsonDocument document = parseCJson(printed(buildCJson([&] { return dict.toJson(); })));
  fuzz::require(bool(document), "a written dictionary is JSON");
  PortDict loaded;
  fuzz::require(!loaded.fromJson(*document), "a written dictionary loads");
  return loaded;
}

}  // namespace
}  // namespace quenfold

namespace quenfold::fuzz {
namespace {

void fuzzPortKey(std::string_view input) {
  PortDict dict;
  const std::vector<Registered> registered = registerAll(input, dict);
  constexpr std::uint32_t kPackedBits = 32;
  bool fits = dict.computeWidths() <= kPackedBits;
  for (const Registered& port : registered) {
    fits = fits && !port.negative;
  }
  PortDict loaded = reloaded(dict);
  for (const Registered& port : registered) {
    const std::uint64_t packed = dict.packIdKey(port.idKey);
    const std::string unpacked = dict.unpackToPortKey(packed);
    require(packed >> kPackedBits == 0, "a packed port has 32 bits");
    if (fits) {
      requireEqual(unpacked, port.key, "a packed port comes back");
      requireEqual(loaded.unpackToPortKey(packed), port.key, "from a loaded dictionary too");
    }
  }
}

const Target kPortKey("port_key", fuzzPortKey);

}  // namespace
}  // namespace quenfold::fuzz
