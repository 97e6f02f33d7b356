#include "tests/host/store/store_names.h"

#include "test_server.h"

namespace qorhost::test {

namespace {

using postgres::test::TestServer;

std::string Create(const std::string& like) {
  static int count = 0;
  return TestServer::Shared().Create("place" + std::to_string(++count), like);
}

}  // namespace

std::string WhyNoServer() {
  return TestServer::Missing();
}

std::string NewServerName() {
  return Create("template0");
}

std::string NewServerNameLike(const std::string& name) {
  const std::size_t begin = name.rfind('/', name.find('?')) + 1;
  return Create(name.substr(begin, name.find('?') - begin));
}

}  // namespace qorhost::test
