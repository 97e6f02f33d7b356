// The file of transcripts that the native tests keep, as it was when this was built.
#pragma once

#include <string_view>

namespace qortest {

extern const std::string_view kKeptTranscripts;

}  // namespace qortest
