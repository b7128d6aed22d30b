#include "floor_program.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
  try {
    std::cout << quenfold::floor::measure({argv + 1, argv + argc}) << '\n';
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
