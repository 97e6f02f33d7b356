// Runs a fuzzer's entry point over files, for builds without libFuzzer: each argument is an input
// file or a folder whose files are inputs. A crash or a failed check of the fuzzer ends the program
// as it would end the fuzzer.
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::cerr << "cannot read " << path << '\n';
    return false;
  }
  std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const std::vector<std::uint8_t> bytes(content.begin(), content.end());
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  return true;
}

// Adds the files under `argument`, in no certain order; a folder or file that is not there is an
// error, so that a corpus that went missing cannot pass.
void Collect(const std::filesystem::path& argument, std::vector<std::filesystem::path>& files) {
  if (!std::filesystem::is_directory(argument)) {
    files.push_back(argument);
    return;
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(argument)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::vector<std::filesystem::path> files;
    for (int index = 1; index < argc; ++index) {
      Collect(argv[index], files);
    }
    if (files.empty()) {
      std::cerr << "no input files\n";
      return 2;
    }
    for (const auto& file : files) {
      if (!Replay(file)) {
        return 2;
      }
    }
    std::cout << "replayed " << files.size() << " inputs\n";
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "an exception left the fuzzer's entry point: " << failure.what() << '\n';
    return 1;
  }
}
