#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "app/stage_timer.h"
#include "json/format.h"
#include "logicalio/pack.h"
#include "logicalio/unpack.h"
#include "support/scratch.h"

namespace quenfold::test {

inline constexpr std::string_view kNoDevices = R"({"deviceLabels": []})";
inline constexpr std::string_view kNoPortLabels = R"({"portLabels": {}})";

/// Two devices, and a port of one of them with a label of the user's.
inline constexpr std::string_view kDevices = R"({"deviceLabels": [
  {"id": "SN1", "label": "Stage", "serial": "SN1"},
  {"id": "SN2", "label": "FOH", "serial": "SN2"}]})";
inline constexpr std::string_view kPortLabels =
    R"({"portLabels": {"SN2.slot1.in[2].mic.ch0": "Vox"}})";

/// A folder with both label files, in which whole conversions run.
class LogicalIOFolder : public ScratchFolder {
 public:
  explicit LogicalIOFolder(std::string_view devices = kNoDevices,
                           std::string_view portLabels = kNoPortLabels) {
    writeLabelFile(kDeviceLabelsSection, devices);
    writeLabelFile(kPortLabelsSection, portLabels);
  }

  /// Packs the text as the input file "in", mostly for the files that this writes.
  std::uint32_t pack(const std::string& text) const {  // NOLINT(modernize-use-nodiscard)
    return convertVelmoraToPacked(path(), path("in"), text, path());
  }

  /// The legacy text and the fingerprint text.
  std::pair<std::string, std::string> unpack(  // NOLINT(modernize-use-nodiscard)
      const std::string& stem) const {
    return convertPackedToVelmora(stem, path());
  }

  [[nodiscard]] bool has(std::string_view name) const {
    return std::filesystem::exists(path(name));
  }

 private:
  void writeLabelFile(std::string_view section, std::string_view json) const {
    static_cast<void>(file(packedFileName(section), json));
  }
};

/// The labels of the stage reports in verbose mode, each with its line end, without their times;
/// other lines as they are.
template <typename Call>
std::string stagesOf(Call call) {
  verbose = true;
  std::istringstream lines(standardErrorOf(call));
  verbose = false;
  std::string stages;
  for (std::string line; std::getline(lines, line);) {
    const bool timed = line.size() > 3 && line.substr(line.size() - 3) == " ms";
    stages += (timed ? line.substr(0, line.rfind(": ")) : line) + "\n";
  }
  return stages;
}

}  // namespace quenfold::test
