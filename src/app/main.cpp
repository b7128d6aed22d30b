#include <exception>
#include <iostream>
#include <optional>

#include "app/driver.h"
#include "app/options.h"

int main(int argc, char** argv) {
  try {
    const std::optional<quenfold::Options> options = quenfold::parseOptions(argc, argv);
    if (!options) {
      quenfold::printUsage();
      return 0;
    }
    quenfold::run(*options);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << std::endl;
    return 1;
  }
}
