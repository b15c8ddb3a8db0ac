#include "Command.h"

#include <iostream>

ExitStatus report(ExitStatus status, const std::string& message) {
  std::cerr << "tovin: " << message << "\n";
  return status;
}
