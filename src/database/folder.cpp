#include "database/folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include "app/error.h"
#include "app/files.h"
#include "app/text.h"

namespace quenfold::database {
namespace {

constexpr std::string_view kLegacyMark = "legacy:";
constexpr std::string_view kPackedMark = "packed:";

/// An argument taken apart.
struct Argument {
  std::string path;  // without the "/" that completing a folder's name leaves at its end
  bool mayBeLegacy = true;
  bool mayBePacked = true;
};

std::string withoutSlash(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') {
    path.remove_suffix(1);
  }
  return std::string(path);
}

Argument takeApart(std::string_view argument) {
  if (beginsWith(argument, kLegacyMark)) {
    return {withoutSlash(argument.substr(kLegacyMark.size())), true, false};
  }
  if (beginsWith(argument, kPackedMark)) {
    return {withoutSlash(argument.substr(kPackedMark.size())), false, true};
  }
  return {withoutSlash(argument), true, true};
}

}  // namespace

std::string_view formName(Form form) { return form == Form::kLegacy ? "legacy" : "packed"; }

std::string folderOf(std::string_view argument) {
  std::string path = takeApart(argument).path;
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) {
    throw runtimeError("no such folder: {}", path);
  }
  if (!S_ISDIR(status.st_mode)) {
    throw runtimeError("not a folder: {}", path);
  }
  return path;
}

Folder findDatabase(std::string_view argument) {
  const auto [path, mayBeLegacy, mayBePacked] = takeApart(argument);
  const bool legacy = mayBeLegacy && isThere(joinPath(path, kMatricesFile));
  const bool packed = mayBePacked && isThere(joinPath(path, packedFileName(kMatricesSection)));
  if (legacy && packed) {
    throw runtimeError("{0} holds a legacy and a packed database: say legacy:{0} or packed:{0}",
                       path);
  }
  if (!legacy && !packed) {
    const Form asked = mayBeLegacy ? Form::kLegacy : Form::kPacked;
    throw mayBeLegacy && mayBePacked ? runtimeError("no database in {}", path)
                                     : runtimeError("no {} database in {}", formName(asked), path);
  }
  return {path, legacy ? Form::kLegacy : Form::kPacked};
}

std::string pathFor(std::string_view argument, Form form) {
  Argument parts = takeApart(argument);
  if (form == Form::kLegacy ? !parts.mayBeLegacy : !parts.mayBePacked) {
    throw runtimeError("not a {} database: {}", formName(form), argument);
  }
  return std::move(parts.path);
}

bool isThere(const std::string& path) { return access(path.c_str(), F_OK) == 0 || errno != ENOENT; }

std::vector<std::string> fileNames(Form form) {
  if (form == Form::kLegacy) {
    std::vector<std::string> names(kLegacyMatricesFiles.begin(), kLegacyMatricesFiles.end());
    for (const std::string_view table : kTableFiles) {
      names.emplace_back(table);
      names.push_back(std::string(table) + kHashFile);
    }
    return names;
  }
  std::vector<std::string> names;
  names.reserve(kPackedSections.size() + kTableCount * kPackedTableFiles.size());
  for (const char* const section : kPackedSections) {
    names.push_back(packedFileName(section));
  }
  for (const char* const output : kTableOutputs) {
    for (const char* const file : kPackedTableFiles) {
      names.push_back(std::string(output) + file);
    }
  }
  return names;
}

bool isDatabaseFile(std::string_view name) {
  const auto holds = [name](const std::vector<std::string>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  return holds(fileNames(Form::kLegacy)) || holds(fileNames(Form::kPacked));
}

std::vector<std::string> filesIn(const Folder& folder) {
  const std::vector<std::string> names = fileNames(folder.form);
  std::vector<std::string> found;
  std::copy_if(names.begin(), names.end(), std::back_inserter(found),
               [&](const std::string& name) { return isThere(joinPath(folder.path, name)); });
  return found;
}

FileTexts readPackedFiles(const std::string& path) {
  FileTexts texts;
  for (const std::string& name : filesIn({path, Form::kPacked})) {
    texts.emplace(name, readFile(joinPath(path, name)));
  }
  return texts;
}

}  // namespace quenfold::database
