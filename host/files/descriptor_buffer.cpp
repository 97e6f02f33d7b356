#include "host/files/descriptor_buffer.h"

#include <unistd.h>

#include <cerrno>
#include <ios>

namespace qorhost {

bool DescriptorBuffer::WriteOut() {
  const char* next = pbase();
  while (next < pptr() && !failure_) {
    const ssize_t written = write(descriptor_, next, static_cast<std::size_t>(pptr() - next));
    if (written >= 0) {
      next += written;
    } else if (errno != EINTR) {
      failure_ = std::error_code(errno, std::generic_category());
    }
  }
  setp(bytes_.data(), bytes_.data() + bytes_.size());
  return !failure_;
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type character) {
  if (!WriteOut()) {
    return traits_type::eof();
  }
  if (!traits_type::eq_int_type(character, traits_type::eof())) {
    sputc(traits_type::to_char_type(character));
  }
  return traits_type::not_eof(character);
}

int DescriptorBuffer::sync() {
  return WriteOut() ? 0 : -1;
}

DescriptorBuffer::int_type DescriptorBuffer::underflow() {
  ssize_t count = 0;
  do {
    count = read(descriptor_, bytes_.data(), bytes_.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) {
    throw std::ios_base::failure("read", std::error_code(errno, std::generic_category()));
  }
  if (count == 0) {
    return traits_type::eof();
  }
  setg(bytes_.data(), bytes_.data(), bytes_.data() + count);
  return traits_type::to_int_type(bytes_[0]);
}

}  // namespace qorhost
