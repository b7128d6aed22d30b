#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/stage_timer.h"
#include "database/check.h"
#include "database/commands.h"
#include "database/expand_tree.h"
#include "database/folder.h"
#include "database/size_table.h"
#include "database/staging.h"
#include "logicalio/unpack.h"
#include "matrices/expand.h"
#include "matrices/unpack.h"

namespace quenfold::database {
namespace {

/// The source and the target of a run, held as long as it lasts. One folder may be both. A run that
/// only shows what it would do leaves the target alone.
class HeldFolders {
 public:
  HeldFolders(const ConvertRequest& request, const std::string& target) {
    const std::string source = folderOf(request.source);
    if (!request.dryRun) {
      target_.emplace(HeldFolder::forWriting(target, isDatabaseFile));
    }
    if (!target_ || !isAt(target_->folder(), source)) {
      source_.emplace(HeldFolder::forReading(source, isDatabaseFile));
    }
  }

  /// Null for a run that writes nothing.
  [[nodiscard]] const HeldFolder* target() const { return target_ ? &*target_ : nullptr; }

 private:
  std::optional<HeldFolder> target_;
  std::optional<HeldFolder> source_;
};

/// Writes the text of a file, or all of it piece by piece.
using WriteFile = std::function<void(OutputFile& out)>;

struct NewFile {
  std::string name;
  WriteFile write;
};

Folder sourceOf(const std::string& argument, Form form) {
  Folder folder = findDatabase(argument);
  if (folder.form != form) {
    throw runtimeError("not a {} database: {}", formName(form), argument);
  }
  return folder;
}

/// Files of the set that the target holds and the source does not give.
std::vector<std::string> staleFiles(const std::string& target, Form form,
                                    const std::vector<NewFile>& files) {
  std::vector<std::string> stale = filesIn({target, form});
  stale.erase(std::remove_if(stale.begin(), stale.end(),
                             [&](const std::string& name) {
                               return std::any_of(
                                   files.begin(), files.end(),
                                   [&](const NewFile& file) { return file.name == name; });
                             }),
              stale.end());
  return stale;
}

std::string staleText(const std::vector<std::string>& stale, const std::string& target) {
  std::string text = fmt::format(
      "Refused: {} holds files that the source does not give. --remove-stale takes them away:\n",
      target);
  for (const std::string& name : stale) {
    text += fmt::format("    {}\n", name);
  }
  return text;
}

std::optional<Report> refusalOf(const Findings& findings, const std::vector<Kind>& accepted) {
  const std::vector<std::string_view> kinds = refusingKinds(findings, accepted);
  if (kinds.empty()) {
    return {};
  }
  return Report{fmt::format("{}Refused. --accept {} converts all the same.\n",
                            findingsText(findings), fmt::join(kinds, ",")),
                true};
}

/// The bytes of the file. Without a folder it goes nowhere.
FileSize writeNew(const NewFile& file, Replacement* replacement) {
  const std::string path = replacement == nullptr ? "/dev/null" : replacement->stage(file.name);
  OutputFile out(path);
  file.write(out);
  out.close();
  return {file.name, out.size()};
}

std::vector<FileSize> writeAll(const std::vector<NewFile>& files,
                               const std::vector<std::string>& stale, const HeldFolder* target) {
  std::optional<Replacement> replacement;
  if (target != nullptr) {
    replacement.emplace(*target);
  }
  std::vector<FileSize> sizes;
  sizes.reserve(files.size());
  for (const NewFile& file : files) {
    sizes.push_back(writeNew(file, replacement ? &*replacement : nullptr));
  }
  if (replacement) {
    for (const std::string& name : stale) {
      replacement->remove(name);
    }
    replacement->commit();
  }
  return sizes;
}

/// A conversion whose source is read and checked.
struct Conversion {
  const ConvertRequest& request;
  std::string target;
  Form form;                      // of the target
  std::vector<FileSize> sources;  // what is converted
};

Report finish(const Conversion& conversion, const std::vector<NewFile>& files,
              const HeldFolders& held) {
  const std::vector<std::string> stale = staleFiles(conversion.target, conversion.form, files);
  if (!stale.empty() && !conversion.request.removeStale) {
    return {staleText(stale, conversion.target), true};
  }
  return {sizeTable(conversion.sources, writeAll(files, stale, held.target())), false};
}

NewFile textFile(std::string name, const std::string& text) {
  return {std::move(name), [&text](OutputFile& out) { out.append(text); }};
}

/// Without them unpacking cannot begin, whatever was accepted.
void requireFiles(const FileTexts& texts, const std::string& folder) {
  for (const char* const section : {kDeviceLabelsSection, kPortLabelsSection, kMatricesSection}) {
    if (texts.count(packedFileName(section)) == 0) {
      throw runtimeError("error while opening file: {}", joinPath(folder, packedFileName(section)));
    }
  }
}

FileTexts unpackTables(PackedDatabase& database) {
  FileTexts texts;
  for (const Table place : kTables) {
    std::optional<PackedTable>& table = database.tables.at(place);
    if (table) {
      table->context.portLabels = &database.labelsByName;
      TimePoint stageStart = now();
      auto [legacy, hash] = printUnpacked(
          unpackTable(*table->kind, *table->contents, table->context, stageStart), stageStart);
      const std::string name(kTableFiles.at(place));
      texts.emplace(name + kHashFile, std::move(hash));
      texts.emplace(name, std::move(legacy));
      table.reset();
    }
  }
  return texts;
}

}  // namespace

Report pack(const ConvertRequest& request) {
  const std::string target = pathFor(request.target, Form::kPacked);
  const HeldFolders held(request, target);
  const Folder source = sourceOf(request.source, Form::kLegacy);
  const LegacyDatabase legacy = readLegacyDatabase(source.path);
  const PackedSet set = packInMemory(legacy);
  const Findings findings = checkLegacy(legacy, set, false);
  if (std::optional<Report> refusal = refusalOf(findings, request.accepted)) {
    return *std::move(refusal);
  }
  std::vector<std::string> read = {std::string(kMatricesFile)};
  std::vector<NewFile> files;
  for (const auto& [name, text] : set.texts) {
    files.push_back(textFile(name, text));
  }
  for (const Table table : kTables) {
    if (legacy.tables.at(table)) {
      read.emplace_back(kTableFiles.at(table));
    }
  }
  return finish({request, target, Form::kPacked, sizesIn(source.path, read)}, files, held);
}

Report unpack(const ConvertRequest& request) {
  const std::string target = pathFor(request.target, Form::kLegacy);
  const HeldFolders held(request, target);
  const Folder source = sourceOf(request.source, Form::kPacked);
  const FileTexts texts = readPackedFiles(source.path);
  PackedDatabase database = loadPackedDatabase(texts, source.path);
  const Findings findings = checkPacked(texts, database, false);
  if (std::optional<Report> refusal = refusalOf(findings, request.accepted)) {
    return *std::move(refusal);
  }
  requireFiles(texts, source.path);
  const unpacking::ExpandedTree expanded = expandTree(database, database.portLabels);
  unpacking::LegacyWriter writer(expanded);
  const FileTexts tables = unpackTables(database);
  std::vector<NewFile> files;
  files.reserve(kLegacyFiles.size() + tables.size());
  for (const LegacyFile& file : kLegacyFiles) {
    files.push_back({std::string(file.name),
                     [&writer, write = file.write](OutputFile& out) { (writer.*write)(out); }});
  }
  for (const auto& [name, text] : tables) {
    files.push_back(textFile(name, text));
  }
  return finish({request, target, Form::kLegacy, sizesIn(source.path, filesIn(source))}, files,
                held);
}

}  // namespace quenfold::database
