#include "host/desks/author.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <string>

#include "host/components/store_host.h"

namespace qorhost {

Author AuthorOfProcess(std::string_view program) {
  Author author;
  if (const passwd* user = getpwuid(geteuid())) {
    author.who = user->pw_name;
  } else {
    author.who = std::to_string(geteuid());
  }
  std::array<char, 256> machine{};
  author.origin = program;
  if (gethostname(machine.data(), machine.size() - 1) == 0) {
    author.origin += std::string(" on ") + machine.data();
  }
  author.utc = UtcClock();
  return author;
}

}  // namespace qorhost
