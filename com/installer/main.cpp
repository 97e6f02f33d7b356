// qorcred_installer_description VERSION 32|64 machine|user FOLDER CONTENT
// Writes the description of an installer to standard output.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "com/installer/description.h"

int main(int count, char** words) {
  if (count != 6) {
    std::fputs("usage: qorcred_installer_description VERSION 32|64 machine|user FOLDER CONTENT\n",
               stderr);
    return EXIT_FAILURE;
  }
  using namespace qorcred::com;
  try {
    const Installer installer{
        .version = words[1],
        .bitness = std::string_view(words[2]) == "64" ? Bitness::k64 : Bitness::k32,
        .scope = std::string_view(words[3]) == "user" ? Scope::kUser : Scope::kMachine,
        .folder = words[4],
        .content = words[5]};
    std::fputs(Describe(installer).c_str(), stdout);
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "qorcred_installer_description: %s\n", failure.what());
    return EXIT_FAILURE;
  }
}
