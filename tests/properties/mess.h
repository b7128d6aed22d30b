#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "generator/random.h"

namespace quenfold::properties {

/// The ways in which a made-up database is untidy.
enum class Mess : std::size_t {
  // of the plant
  kGapInPorts,
  kGapInChannels,
  kPortRepeated,
  kPortForeign,
  kPortOddNumber,
  kPortOddPrefix,
  kPortOtherLayout,
  kPortBeyond32Bits,
  kPortUnreadable,
  kLabelShared,
  kLabelIsPort,
  kLabelContinuesPort,
  kLabelOddText,
  kLabelMissing,
  kSerialShared,
  kSerialEmpty,
  kSerialIsLabel,
  kMatrixOtherName,
  kMatrixOtherSerial,
  kMatrixRepeated,
  kMatrixType,
  kMatrixWithoutPorts,
  kMatrixNoObject,
  kMatricesJumbled,
  kPortsJumbled,
  kMemberRepeated,
  kMemberUnknown,
  kZeroByte,
  // of a table
  kIdRepeated,
  kIdOdd,
  kNameOdd,
  kCategoryGap,
  kCategoryBeyondSix,
  kCategoryOdd,
  kFieldOdd,
  kPortRenamed,
  kPortOtherSpelling,
  kPortBySerial,
  kPortNoText,
  kPortNowhere,
  kPortsEmptyAtEnd,
  kRecordIncomplete,
  kTableOddFrame,
  kCount,
};

/// Which of them one database has, and where.
class Untidiness {
 public:
  /// None to a few, drawn at random.
  explicit Untidiness(generator::Random& random) : random_(random) {
    for (std::uint32_t left = random.below(5); left > 0; --left) {
      on_.at(random.below(static_cast<std::uint32_t>(on_.size()))) = true;
    }
  }

  /// Whether it strikes here.
  bool strikes(Mess mess, std::uint32_t percent = 25) {
    return on_.at(static_cast<std::size_t>(mess)) && random_.percent(percent);
  }

 private:
  generator::Random& random_;
  std::array<bool, static_cast<std::size_t>(Mess::kCount)> on_{};
};

}  // namespace quenfold::properties
