#include <exception>
#include <iostream>
#include <optional>

#include "app/driver.h"
#include "app/options.h"
#include "app/process.h"

int main(int argc, char** argv) {
  quenfold::prepareProcess(1);
  try {
    const std::optional<quenfold::Options> options = quenfold::parseOptions(argc, argv);
    if (options) {
      quenfold::run(*options);
    } else {
      quenfold::printUsage();
    }
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << std::endl;
    return 1;
  }
  return 0;
}
