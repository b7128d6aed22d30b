#include "logicalio/port_key_printer.h"

namespace quenfold {
namespace {

std::string_view nameOrEmpty(const VelDB::RefMap& map, std::uint32_t id) {
  const std::string* const name = map.nameOf(id);
  return name == nullptr ? std::string_view() : *name;
}

}  // namespace

std::string_view PortKeyPrinter::print(std::uint64_t packed) {
  const PortKeyIds ids = dict_.splitFields(packed);
  const std::array headIds = {ids[kDevice], ids[kSlot], ids[kPortPrefix]};
  if (headSize_ == 0 || headIds != headIds_) {
    printHead(ids);
    headIds_ = headIds;
  }
  key_.resize(headSize_);
  appendPortKeyTail(key_, static_cast<std::int32_t>(ids[kPortId]),
                    nameOrEmpty(dict_.type, ids[kType]), static_cast<std::int32_t>(ids[kCh]));
  return {key_.data(), key_.size()};
}

void PortKeyPrinter::printHead(const PortKeyIds& ids) {
  const bool unlistedSlot = !dict_.slot.containsId(ids[kSlot]) && ids[kSlot] < dict_.impliedSlots;
  const std::string slotName = unlistedSlot ? impliedSlotName(ids[kSlot]) : std::string();
  key_.clear();
  appendPortKeyHead(key_, nameOrEmpty(dict_.device, ids[kDevice]),
                    unlistedSlot ? slotName : nameOrEmpty(dict_.slot, ids[kSlot]),
                    nameOrEmpty(dict_.portPrefix, ids[kPortPrefix]));
  headSize_ = key_.size();
}

}  // namespace quenfold
