// Hands a target the files and folders of the command line, one after the other: its corpus, as a test.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "Must.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  std::vector<fs::path> files;
  for (const fs::path given : std::vector<std::string>(argv + 1, argv + argc)) {
    if (fs::is_directory(given))
      std::copy(fs::directory_iterator(given), {}, std::back_inserter(files));
    else
      files.push_back(given);
  }
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), {});
    must(!stream.fail(), file.string() + " can be read");
    std::cout << file.string() << std::endl;  // known even if it is the last
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  must(!files.empty(), "there is an input");
}
