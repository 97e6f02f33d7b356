#include "host/store/postgres/sql_functions.h"

#include <string_view>

#include "host/store/postgres/date_functions.h"
#include "host/store/postgres/letter_functions.h"
#include "host/store/postgres/number_functions.h"
#include "host/store/postgres/picture_functions.h"
#include "host/store/postgres/text_functions.h"
#include "host/store/postgres/value_functions.h"

namespace qorhost::postgres {

namespace {

// An identity that a statement has given to a row itself: those that the server gives out later are
// higher.
constexpr std::string_view kIdentityFunctions = R"sql(
CREATE FUNCTION desktop.claimed(relation text, identity int4) RETURNS int4
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
  sequence text := pg_get_serial_sequence(relation, 'RID');
  latest int8;
BEGIN
  EXECUTE 'SELECT CASE WHEN is_called THEN last_value ELSE 0 END FROM ' || sequence INTO latest;
  IF identity > latest THEN
    PERFORM setval(sequence, identity);
  END IF;
  RETURN identity;
END $$;
)sql";

}  // namespace

const std::string& CreateFunctionsText() {
  static const std::string all = [] {
    std::string text = "CREATE SCHEMA desktop;\n";
    text += LetterFunctions();
    text.append(kNumberFunctions).append(kDateFunctions).append(kTextFunctions);
    text.append(kPictureFunctions).append(kValueFunctions).append(kIdentityFunctions);
    return text;
  }();
  return all;
}

}  // namespace qorhost::postgres
