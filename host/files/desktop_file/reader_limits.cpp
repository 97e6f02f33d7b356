#include "host/files/desktop_file/reader_limits.h"

#include <sys/prctl.h>

#include <csignal>

namespace qorhost::desktop_file {

namespace {

bool Limit(decltype(RLIMIT_AS) what, rlim_t most) {
  const rlimit limit{most, most};
  return setrlimit(what, &limit) == 0;
}

}  // namespace

bool LimitThisProcess(rlim_t mebibytes, rlim_t seconds) {
  constexpr rlim_t kMebibyte = rlim_t{1} << 20;
  constexpr rlim_t kMostFiles = 16;
  // What the library says on standard error may go to a file: it is lost then, and nothing more.
  return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && Limit(RLIMIT_AS, mebibytes * kMebibyte) &&
         Limit(RLIMIT_CPU, seconds) && Limit(RLIMIT_FSIZE, 0) && Limit(RLIMIT_CORE, 0) &&
         Limit(RLIMIT_NOFILE, kMostFiles) && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
}

}  // namespace qorhost::desktop_file
