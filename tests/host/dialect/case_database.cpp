#include "case_database.h"

#include <fstream>
#include <stdexcept>

#include "frame/convert.h"

namespace qorhost::dialect::test {

void RunSeed(CaseDatabase& database) {
  for (const std::string& line : LinesOf("seed.sql")) {
    if (!line.empty() && line.front() != '#' && database.Run(line).changes != 1) {
      throw std::runtime_error("the seed inserts no row: " + line);
    }
  }
}

std::string Printed(const qorcred::Value& value) {
  const auto* text = value.As<std::string>();
  return text == nullptr ? qorcred::ToText(value) : "'" + *text + "'";
}

std::vector<std::string> LinesOf(const std::string& file) {
  std::ifstream stream(std::string(DIALECT_FOLDER) + "/" + file);
  if (!stream) {
    throw std::runtime_error("cannot read " + file);
  }
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace qorhost::dialect::test
