#include "dircodes/code_text.h"

#include "frame/convert.h"
#include "frame/format.h"

namespace qorcred {

std::string PaddedCode(const Value& code, std::int32_t digits) {
  if (digits < 1) return TextOrEmpty(code);
  return Format(code, std::string(static_cast<std::size_t>(digits), '0'));
}

}  // namespace qorcred
