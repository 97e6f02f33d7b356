// Parts of texts and the patterns of LIKE, in the server's own language.
#pragma once

#include <string_view>

namespace qorhost::postgres {

// Lengths count UTF-16 units: a character beyond U+FFFF has two.
inline constexpr std::string_view kTextFunctions = R"sql(
CREATE FUNCTION desktop.is_narrow(content text) RETURNS boolean
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT octet_length(content) = length(content) OR content !~ '[\U00010000-\U0010FFFF]'
$$;

CREATE FUNCTION desktop.len(content text) RETURNS int4
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT length(content) + CASE WHEN desktop.is_narrow(content) THEN 0
    ELSE length(regexp_replace(content, '[^\U00010000-\U0010FFFF]', '', 'g')) END
$$;

CREATE FUNCTION desktop.count_of(number float8) RETURNS int4
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF desktop.rounded(number) < 0 THEN
    PERFORM desktop.refuse('Invalid procedure call or argument');
  END IF;
  RETURN desktop.rounded(number);
END $$;

-- The first units; stops before a character that would be cut in half.
CREATE FUNCTION desktop.first_units(content text, units int4) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  taken int := 0;
  room int := units;
BEGIN
  IF desktop.is_narrow(content) THEN
    RETURN left(content, units);
  END IF;
  WHILE taken < length(content) LOOP
    room := room - CASE WHEN ascii(substr(content, taken + 1, 1)) > 65535 THEN 2 ELSE 1 END;
    EXIT WHEN room < 0;
    taken := taken + 1;
  END LOOP;
  RETURN left(content, taken);
END $$;

CREATE FUNCTION desktop.behind(content text, units int4) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT substr(content, length(desktop.first_units(content, units)) + 1)
$$;

CREATE FUNCTION desktop.left(content text, units float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT desktop.first_units(content, desktop.count_of(units))
$$;

CREATE FUNCTION desktop.right(content text, units float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT desktop.behind(content, greatest(desktop.len(content) - desktop.count_of(units), 0))
$$;

CREATE FUNCTION desktop.mid(content text, start float8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF desktop.count_of(start) = 0 THEN
    PERFORM desktop.refuse('Invalid procedure call or argument');
  END IF;
  RETURN desktop.behind(content, desktop.count_of(start) - 1);
END $$;

CREATE FUNCTION desktop.mid(content text, start float8, units float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT desktop.first_units(desktop.mid(content, start), desktop.count_of(units))
$$;

CREATE FUNCTION desktop.trim(content text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$ SELECT btrim(content, ' ') $$;

CREATE FUNCTION desktop.ltrim(content text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$ SELECT ltrim(content, ' ') $$;

CREATE FUNCTION desktop.rtrim(content text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$ SELECT rtrim(content, ' ') $$;

-- What stands between two brackets of a pattern, as a bracket expression of the server.
CREATE FUNCTION desktop.pattern_set(content text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  negated boolean := left(content, 1) = '!';
  body text := CASE WHEN negated THEN substr(content, 2) ELSE content END;
  part text := '';
  place int := 1;
  first_point int;
  last_point int;
BEGIN
  IF body = '' THEN
    PERFORM desktop.refuse('the pattern of LIKE has an empty set of characters');
  END IF;
  IF left(body, 1) = '^' AND length(body) > 1 THEN
    PERFORM desktop.refuse('the pattern of LIKE has a set that begins with ''^'': write ''[!'' for '
                           'all but its characters');
  END IF;
  WHILE place <= length(body) LOOP
    IF substr(body, place, 1) = '-' AND place > 1 AND place < length(body) THEN
      PERFORM desktop.refuse('the pattern of LIKE has a ''-'' between no two characters: write it '
                             'at the set''s end');
    END IF;
    first_point := ascii(substr(body, place, 1));
    last_point := first_point;
    IF place + 2 <= length(body) AND substr(body, place + 1, 1) = '-' THEN
      last_point := ascii(substr(body, place + 2, 1));
      place := place + 2;
    END IF;
    IF last_point < first_point THEN
      PERFORM desktop.refuse('the pattern of LIKE has a set whose range runs backwards');
    END IF;
    part := part || '\U' || lpad(to_hex(first_point), 8, '0')
      || CASE WHEN last_point = first_point THEN ''
              ELSE '-\U' || lpad(to_hex(last_point), 8, '0') END;
    place := place + 1;
  END LOOP;
  RETURN CASE WHEN negated THEN '[^' ELSE '[' END || part || ']';
END $$;

-- A folded pattern as a regular expression of the server.
CREATE FUNCTION desktop.pattern_expression(pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  expression text := '^';
  place int := 1;
  symbol text;
  size int;
BEGIN
  WHILE place <= length(pattern) LOOP
    symbol := substr(pattern, place, 1);
    IF symbol = '%' THEN
      symbol := '.*';
    ELSIF symbol = '_' THEN
      symbol := '.';
    ELSIF symbol = '[' THEN
      size := strpos(substr(pattern, place + 1), ']') - 1;
      IF size < 0 THEN
        PERFORM desktop.refuse('the pattern of LIKE has a ''['' that is not closed: write ''[[]'' '
                               'for the character itself');
      END IF;
      symbol := desktop.pattern_set(substr(pattern, place + 1, size));
      place := place + size + 1;
    ELSIF symbol ~ '[^a-z0-9]' AND ascii(symbol) < 128 THEN
      symbol := '\' || symbol;
    END IF;
    expression := expression || symbol;
    place := place + 1;
  END LOOP;
  RETURN expression || '$';
END $$;

CREATE FUNCTION desktop.like(content text, pattern text) RETURNS boolean
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF length(pattern) > 1024 THEN
    PERFORM desktop.refuse('the pattern of LIKE is too long');
  END IF;
  IF strpos(pattern, '[') = 0 THEN
    RETURN desktop.key(content) COLLATE "C" LIKE replace(desktop.key(pattern), '\', '\\');
  END IF;
  RETURN desktop.key(content) COLLATE "C" ~ desktop.pattern_expression(desktop.key(pattern));
END $$;
)sql";

}  // namespace qorhost::postgres
