#include "database/packed_fingerprints.h"

#include <fmt/core.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "json/cjson_access.h"
#include "logicalio/fingerprints.h"
#include "logicalio/format.h"
#include "logicalio/hash.h"

namespace quenfold::database {
namespace {

/// 0 for one that is missing, as for one that nothing was fed to.
std::uint32_t storedAs(const cJSON* fingerprint) {
  return fingerprint == nullptr ? 0 : toUint32(fingerprint->valuedouble);
}

/// Members of a record whose names differ in letter case have a fingerprint each.
const cJSON* fingerprintNamed(const cJSON* fingerprints, std::string_view name) {
  const cJSON* member = firstChild(fingerprints);
  while (member != nullptr && memberName(*member) != name) {
    member = member->next;
  }
  return member;
}

/// The list under that key in a side file, whose other name is its table's.
const cJSON* sideList(const CJsonDocument& document, const char* key) {
  return firstChild(findMember(document->child, key));
}

class FingerprintCheck {
 public:
  FingerprintCheck(const PackedTable& table, Findings& findings)
      : table_(table), findings_(findings), stored_(findMember(table.contents, kHashKey)) {}

  void checkRecords() {
    const cJSON* entry = firstChild(findMember(table_.contents, kLogicalIOKey));
    for (; entry != nullptr; entry = entry->next) {
      feed(*entry);
    }
    check(kIdKey, id_);
    check(kTallyKey, tally_);
    check(kDescriptionKey, description_);
    check(kPortKey, port_);
    checkRedirect();
  }

  void checkNames() {
    if (!table_.labels) {
      return;
    }
    VelDB::Hash names;
    const cJSON* pair = sideList(table_.labels, kLabelsKey);
    for (; pair != nullptr; pair = pair->next) {
      names.hashAdd(std::string_view(stringValue(pair->child->next)));
    }
    check(kNameKey, names);
    checkSideFile(table_.labels, kLabelsFile, names);
  }

  void checkCategories() {
    if (!table_.categories) {
      return;
    }
    VelDB::Hash categories;
    const cJSON* pair = sideList(table_.categories, kLegacyCategoriesKey);
    for (; pair != nullptr; pair = pair->next) {
      for (const cJSON* item = pair->child->next->child; item != nullptr; item = item->next) {
        addCategories(categories, {readCatEntry(item)});
      }
    }
    check(kCategoryKey, categories);
    checkSideFile(table_.categories, kLegacyCategoriesFile, categories);
  }

 private:
  void feed(const cJSON& entry) {
    id_.hashAdd(static_cast<std::uint32_t>(findMember(&entry, kIdKey)->valueint));
    feedText(tally_, findMember(&entry, kTallyKey));
    feedText(description_, findMember(&entry, kDescriptionKey));
    feedRedirect(findMember(&entry, kRedirectKey));
    for (const cJSON* port = firstChild(findMember(&entry, kPortKey)); port != nullptr;
         port = port->next) {
      if (cJSON_IsNumber(port) != 0) {
        port_.hashAdd(toUint64(port->valuedouble));
      } else {
        port_.hashAdd(std::uint32_t{0});
      }
    }
  }

  static void feedText(VelDB::Hash& fingerprint, const cJSON* text) {
    if (const char* const value = stringValue(text)) {
      fingerprint.hashAdd(std::string_view(value));
    }
  }

  void feedRedirect(const cJSON* redirect) {
    if (redirect != nullptr) {
      redirectsHeld_.hashAdd(static_cast<std::uint32_t>(redirect->valueint));
    } else {
      redirectLeftOut_ = true;
    }
  }

  /// Either every legacy entry had one, or those alone that the file holds, or something between
  /// that nobody can tell.
  void checkRedirect() {
    const cJSON* const stored = fingerprintNamed(stored_, kRedirectKey);
    if (stored == nullptr || !redirectLeftOut_) {
      check(kRedirectKey, redirectsHeld_);
    }
  }

  void check(const char* name, const VelDB::Hash& computed) {
    add(std::string(table_.kind->outputKey) + kPortsFile, fmt::format("{}.{}", kHashKey, name),
        storedAs(fingerprintNamed(stored_, name)), computed.value());
  }

  void checkSideFile(const CJsonDocument& document, const char* ending,
                     const VelDB::Hash& computed) {
    add(std::string(table_.kind->outputKey) + ending, kHashKey,
        storedAs(findMember(document->child, kHashKey)), computed.value());
  }

  void add(const std::string& file, const std::string& place, std::uint32_t stored,
           std::uint32_t computed) {
    if (stored != computed) {
      findings_.add(Kind::kFingerprintDiffers, file,
                    [&] { return fmt::format("{}: {} -> {}", place, stored, computed); });
    }
  }

  const PackedTable& table_;
  Findings& findings_;
  const cJSON* stored_;
  VelDB::Hash id_;
  VelDB::Hash tally_;
  VelDB::Hash description_;
  VelDB::Hash port_;
  VelDB::Hash redirectsHeld_;
  bool redirectLeftOut_ = false;
};

}  // namespace

void checkFingerprints(const PackedTable& table, Findings& findings) {
  FingerprintCheck check(table, findings);
  check.checkRecords();
  check.checkNames();
  check.checkCategories();
}

}  // namespace quenfold::database
