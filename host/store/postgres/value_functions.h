// Values of which only a row tells whether they are numbers or texts, in the server's own language.
#pragma once

#include <string_view>

namespace qorhost::postgres {

// Such a value is a JSON number or a JSON text. Numbers come before texts, and texts are in the
// dialect's order.
inline constexpr std::string_view kValueFunctions = R"sql(
CREATE TYPE desktop.ordered AS (number float8, folded text COLLATE "C");

CREATE FUNCTION desktop.is_text(content jsonb) RETURNS boolean
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$ SELECT jsonb_typeof(content) = 'string' $$;

CREATE FUNCTION desktop.order_of(content jsonb) RETURNS desktop.ordered
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content)
              THEN ROW(NULL, desktop.key(content #>> '{}'))::desktop.ordered
              ELSE ROW((content #>> '{}')::float8, NULL)::desktop.ordered END
$$;

CREATE FUNCTION desktop.text_of(content jsonb) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN content #>> '{}'
              ELSE desktop.number_text((content #>> '{}')::float8) END
$$;

CREATE FUNCTION desktop.text_of(number float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$ SELECT desktop.number_text(number) $$;

CREATE FUNCTION desktop.number_of(content jsonb) RETURNS float8
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.number_of(content #>> '{}')
              ELSE (content #>> '{}')::float8 END
$$;

CREATE FUNCTION desktop.text_number(content jsonb) RETURNS float8
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.text_number(content #>> '{}')
              ELSE (content #>> '{}')::float8 END
$$;

CREATE FUNCTION desktop.column_number(content jsonb) RETURNS float8
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.column_number(content #>> '{}')
              ELSE (content #>> '{}')::float8 END
$$;

CREATE FUNCTION desktop.date(content jsonb) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.date(content #>> '{}')
              ELSE desktop.date((content #>> '{}')::float8) END
$$;

CREATE FUNCTION desktop.store_date(content jsonb) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.store_date(content #>> '{}')
              ELSE desktop.store_date((content #>> '{}')::float8) END
$$;

CREATE FUNCTION desktop.store_boolean(number float8) RETURNS int4
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN number <> 0 THEN -1 ELSE 0 END
$$;

CREATE FUNCTION desktop.store_boolean(content text) RETURNS int4
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE lower(content COLLATE "C") WHEN 'true' THEN -1 WHEN 'false' THEN 0
         ELSE desktop.store_boolean(desktop.number_of(content)) END
$$;

CREATE FUNCTION desktop.store_boolean(content jsonb) RETURNS int4
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.store_boolean(content #>> '{}')
              ELSE desktop.store_boolean((content #>> '{}')::float8) END
$$;

CREATE FUNCTION desktop.truth(content jsonb) RETURNS boolean
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.val(content #>> '{}')
              ELSE (content #>> '{}')::float8 END <> 0
$$;

CREATE FUNCTION desktop.format(content jsonb, picture text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) OR content IS NULL
              THEN desktop.format(content #>> '{}', picture)
              ELSE desktop.format((content #>> '{}')::float8, picture) END
$$;

-- A bound text that stands where a number is compared: the number that it is, or the text.
CREATE FUNCTION desktop.bound_value(content text) RETURNS jsonb
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.bound_number(content) = 'Infinity' THEN to_jsonb(content)
              ELSE to_jsonb(desktop.bound_number(content)) END
$$;

-- A number where the text is one, else the text.
CREATE FUNCTION desktop.number_or_text(content text) RETURNS jsonb
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE desktop.text_number(content)
    WHEN 'Infinity' THEN to_jsonb(content)
    WHEN '-Infinity' THEN to_jsonb(-1.7976931348623157e308::float8)
    ELSE to_jsonb(desktop.text_number(content)) END
$$;

CREATE FUNCTION desktop.number_or_text(content jsonb) RETURNS jsonb
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_text(content) THEN desktop.number_or_text(content #>> '{}')
              ELSE content END
$$;

-- What a column holds that takes numbers as well as time stamps.
CREATE FUNCTION desktop.stored_value(content text) RETURNS jsonb
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN content ~ '^-?[0-9]{1,10}$' THEN to_jsonb(content::int8)
              ELSE to_jsonb(content) END
$$;

-- The lowest and the highest of texts and of other values; of equal ones that which came first.
CREATE FUNCTION desktop.lower_of(one text, other text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.key(other) COLLATE "C" < desktop.key(one) THEN other ELSE one END
$$;

CREATE FUNCTION desktop.higher_of(one text, other text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.key(other) COLLATE "C" > desktop.key(one) THEN other ELSE one END
$$;

CREATE FUNCTION desktop.lower_of(one jsonb, other jsonb) RETURNS jsonb
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.order_of(other) < desktop.order_of(one) THEN other ELSE one END
$$;

CREATE FUNCTION desktop.higher_of(one jsonb, other jsonb) RETURNS jsonb
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.order_of(other) > desktop.order_of(one) THEN other ELSE one END
$$;

CREATE FUNCTION desktop.first_of(one anyelement, other anyelement) RETURNS anyelement
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$ SELECT one $$;

CREATE AGGREGATE desktop.lowest(text) (sfunc = desktop.lower_of, stype = text);
CREATE AGGREGATE desktop.highest(text) (sfunc = desktop.higher_of, stype = text);
CREATE AGGREGATE desktop.lowest(jsonb) (sfunc = desktop.lower_of, stype = jsonb);
CREATE AGGREGATE desktop.highest(jsonb) (sfunc = desktop.higher_of, stype = jsonb);
CREATE AGGREGATE desktop.first(anyelement) (sfunc = desktop.first_of, stype = anyelement);
)sql";

}  // namespace qorhost::postgres
