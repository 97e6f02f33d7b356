#include "host/store/sqlite/file_lock.h"

#include <fcntl.h>
#include <unistd.h>

namespace qorhost::sqlite {

namespace {

constexpr off_t kFirstByte = 0x40000000;
constexpr off_t kBytesOfUse = 512;

}  // namespace

FileLock::FileLock(const std::filesystem::path& file, LockedBytes bytes)
    : descriptor_(open(file.c_str(), O_RDWR | O_CLOEXEC)) {
  if (descriptor_ < 0) {
    return;
  }
  const bool beginning = bytes == LockedBytes::kBeginning;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = kFirstByte;
  lock.l_len = beginning ? 1 : kBytesOfUse;
  locked_ = fcntl(descriptor_, beginning ? F_OFD_SETLKW : F_OFD_SETLK, &lock) == 0;
}

FileLock::~FileLock() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
}

}  // namespace qorhost::sqlite
