// Hands a target the files and folders of the command line, one after the other: its corpus, as a test.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>

#include "Must.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  std::set<fs::path> files(argv + 1, argv + argc);
  for (const fs::path& given : std::set(files))
    if (fs::is_directory(given)) {
      files.erase(given);
      files.insert(fs::directory_iterator(given), {});
    }
  for (const fs::path& file : files) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
    must(!stream.fail(), file.string() + " can be read");
    std::cout << file.string() << std::endl;  // known even if it is the last
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  must(!files.empty(), "there is an input");
}
