// A unit's directory code with a text in every field that is looked at.
#pragma once

#include <string>

#include "host/unit/unit_code.h"

namespace qortest {

[[nodiscard]] inline qorhost::UnitCode SampleCode() {
  return {{"",     "",          "",  "",   "101",    "5550101", "12", "5550202",
           "34",   "Adler, K.", "1", "1",  "240315", "0930",    "1",  "301231",
           "2359", "5",         "1", "30", "1",      "7",       "40", "1"}};
}

[[nodiscard]] inline qorhost::UnitCode With(qorcred::unit_place::Place place, std::string text) {
  qorhost::UnitCode code = SampleCode();
  code[place] = std::move(text);
  return code;
}

}  // namespace qortest
