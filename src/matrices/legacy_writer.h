#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/files.h"
#include "json/writer.h"
#include "matrices/unpacked_port.h"

namespace quenfold::unpacking {

/// Writes the legacy files, each port spelled when it is written. Once constructed it allocates
/// nothing, so no file is lost to memory that runs out. Refers to the expanded tree.
class LegacyWriter {
 public:
  explicit LegacyWriter(const ExpandedTree& expanded);

  void writeMatrices(OutputFile& out);

  // The other four are put together by hand. Kept on purpose: their strings are copied as they are,
  // no character is escaped.

  void writeAvailableInputs(OutputFile& out);
  void writeAvailableOutputs(OutputFile& out);
  void writePortLabels(OutputFile& out);
  void writeUserPortLabels(OutputFile& out);

 private:
  /// What stands before the first and before the second string of an entry.
  struct EntryMarks {
    std::string first;
    std::string second;
  };

  static EntryMarks entryMarks(const char* first, const char* second);
  void writePorts(const MatrixEntry& matrix);
  template <typename AppendEntry>
  void writeList(OutputFile& out, std::optional<Direction> only, AppendEntry appendEntry);
  void writeAvailable(OutputFile& out, Direction direction);

  const ExpandedTree& expanded_;
  PortPrinter printer_;
  CompactJsonWriter json_;
  EntryMarks keyAndValue_;
  EntryMarks portAndLabel_;
};

}  // namespace quenfold::unpacking
