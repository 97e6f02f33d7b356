// Texts as libpq writes them, a line for each address.
#include "host/store/postgres/connecting_words.h"

#include <gtest/gtest.h>

namespace qorhost::postgres::test {

namespace {

TEST(ConnectingWords, OfOneAddressAreOneSentence) {
  EXPECT_EQ(InOneSentence("connection to server on socket \"/run/.s.PGSQL.5432\" failed: No such "
                          "file or directory\n\tIs the server running locally?\n"),
            "connection to server on socket \"/run/.s.PGSQL.5432\" failed: No such file or "
            "directory; Is the server running locally?");
  EXPECT_EQ(InOneSentence("FATAL:  database \"x\" does not exist\n"),
            "FATAL:  database \"x\" does not exist");
  EXPECT_EQ(InOneSentence(""), "");
}

TEST(ConnectingWords, NameAddressesWhereTheSameHappenedTogether) {
  EXPECT_EQ(InOneSentence("connection to server at \"house\" (::1), port 5432 failed: Connection "
                          "refused\n\tIs the server running on that host?\n"
                          "connection to server at \"house\" (127.0.0.1), port 5432 failed: "
                          "Connection refused\n\tIs the server running on that host?\n"),
            "connection to server at \"house\" (::1), port 5432 and at \"house\" (127.0.0.1), port "
            "5432 failed: Connection refused; Is the server running on that host?");
}

TEST(ConnectingWords, TellWhatHappenedElsewhereBehindIt) {
  EXPECT_EQ(
      InOneSentence("connection to server at \"a\", port 1 failed: Connection refused\n"
                    "connection to server at \"b\", port 1 failed: timeout expired\n"
                    "connection to server at \"c\", port 1 failed: Connection refused\n"),
      "connection to server at \"a\", port 1 and at \"c\", port 1 failed: Connection refused; "
      "at \"b\", port 1 failed: timeout expired");
}

// One address is tried with encryption and without.
TEST(ConnectingWords, TellAllThatHappenedAtOneAddressOnce) {
  EXPECT_EQ(
      InOneSentence("connection to server at \"a\", port 1 failed: FATAL:  no entry for host\n"
                    "connection to server at \"a\", port 1 failed: FATAL:  no encryption\n"
                    "connection to server at \"a\", port 1 failed: FATAL:  no encryption\n"),
      "connection to server at \"a\", port 1 failed: FATAL:  no entry for host; FATAL:  no "
      "encryption");
}

}  // namespace

}  // namespace qorhost::postgres::test
