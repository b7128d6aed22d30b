#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quenfold::fuzz {

/// One file of an input that stands for several: the lines after a line "--- <name>" up to the next
/// such line or the end. The line end before a "--- " belongs to neither.
struct InputFile {
  std::string_view name;
  std::string_view text;
};

/// The files in input order, as views into it. What stands before the first "--- " is in none.
std::vector<InputFile> splitInput(std::string_view input);

/// The first file of that name; null when there is none.
const InputFile* findFile(const std::vector<InputFile>& files, std::string_view name);

/// A folder of this process, in the system's folder for temporary files; it goes with the process.

const std::string& workFolder();

/// Makes the files of these names in the folder what the input says: written or not there.
void placeFiles(const std::vector<InputFile>& files, const std::vector<std::string_view>& names);

/// The bytes of a file in the folder.
std::string bytesOf(std::string_view name);

}  // namespace quenfold::fuzz
