// Draws all cases into a folder: golden_draw FOLDER ENDING, such as .txt for recordings and .png for
// pictures.
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "program/golden/cases.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: golden_draw FOLDER ENDING\n";
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    const auto cases = golden::read_cases(TAVD_SOURCE_DIR "/tests/program/golden/cases.txt");
    const golden::Catalogue catalogue;
    for (const golden::Case& drawn : cases) {
      const std::filesystem::path file = folder / (drawn.path() + argv[2]);
      std::filesystem::create_directories(file.parent_path());
      catalogue.draw(drawn, file);
    }
    std::cout << folder.string() << ": " << cases.size() << " drawings\n";
  } catch (const std::exception& error) {
    std::cerr << "golden_draw: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
