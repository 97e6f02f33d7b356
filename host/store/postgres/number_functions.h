// Numbers as the dialect reads, writes and computes them, in the server's own language.
#pragma once

#include <string_view>

namespace qorhost::postgres {

// 'Infinity' stands for a text that is no number where numbers are compared: it equals no number of
// a column and is larger than each, as every text is.
inline constexpr std::string_view kNumberFunctions = R"sql(
CREATE FUNCTION desktop.quoted(content text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  excerpt text := left(content, 40);
BEGIN
  WHILE octet_length(excerpt) > 40 LOOP
    excerpt := left(excerpt, -1);
  END LOOP;
  RETURN '''' || excerpt || CASE WHEN excerpt = content THEN '''' ELSE '...''' END;
END $$;

CREATE FUNCTION desktop.refuse(message text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
  RAISE EXCEPTION '%', message;
END $$;

CREATE FUNCTION desktop.refuse_mismatch(content text, wanted text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
  RAISE EXCEPTION 'data type mismatch: % is not %', desktop.quoted(content), wanted;
END $$;

-- The 15 digits that a number shows, in the shorter of both notations.
CREATE FUNCTION desktop.shown_digits(number float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE SET extra_float_digits = 0 AS $$
  SELECT number::text
$$;

CREATE FUNCTION desktop.number_text(number float8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF number = trunc(number) AND abs(number) < 1e15 THEN
    RETURN number::int8::text;
  END IF;
  IF abs(number) >= 'Infinity' THEN
    RETURN desktop.refuse('Overflow');
  END IF;
  RETURN upper(desktop.shown_digits(number) COLLATE "C");
END $$;

-- A whole number with all its digits.
CREATE FUNCTION desktop.exact(number float8) RETURNS numeric
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  rest float8 := number;
  factor numeric := 1;
BEGIN
  WHILE abs(rest) > 9007199254740992 LOOP
    rest := rest / 2;
    factor := factor * 2;
  END LOOP;
  RETURN rest::int8 * factor;
END $$;

-- The number of digits with at most one point and, behind them, a power of ten; 'Infinity' for one
-- that is too large.
CREATE FUNCTION desktop.decimal_value(digits text, exponent text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
  significant text := ltrim(digits, '0');
  power numeric;
  number numeric;
BEGIN
  IF exponent IS NULL AND length(digits) <= 300 THEN
    RETURN digits::float8;
  END IF;
  IF significant !~ '[1-9]' THEN
    RETURN 0;
  END IF;
  power := coalesce(left(exponent, 13), '0')::numeric;
  IF left(significant, 1) = '.' THEN
    power := power - length(substring(significant FROM '^\.(0*)'));
  ELSE
    power := power + length(split_part(significant, '.', 1));
  END IF;
  -- The number is 0.d... times ten to that power.
  IF power > 309 THEN
    RETURN 'Infinity';
  END IF;
  IF power < -330 THEN
    RETURN 0;
  END IF;
  IF power < 308 AND power > -300 THEN
    RETURN (digits || 'e' || coalesce(exponent, '0'))::float8;
  END IF;
  number := (digits || 'e' || coalesce(exponent, '0'))::numeric;
  IF number >= 2::numeric ^ 1024 - 2::numeric ^ 970 THEN
    RETURN 'Infinity';
  END IF;
  IF number < 2.4703282292062328e-324 THEN
    RETURN 0;
  END IF;
  RETURN number::float8;
END $$;

-- The number of an &H or &O form at the start of a text; Null where none stands there.
CREATE FUNCTION desktop.radix(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  parts text[] := regexp_match(content, '^&(?:[Hh]([0-9A-Fa-f]+)|[Oo]([0-7]+))(&?)');
  digits text := ltrim(coalesce(parts[1], parts[2]), '0');
  bits int8 := 0;
BEGIN
  IF parts IS NULL OR length(digits) > 11 THEN
    RETURN NULL;
  END IF;
  FOR place IN 1 .. length(digits) LOOP
    bits := bits * CASE WHEN parts[1] IS NULL THEN 8 ELSE 16 END
      + strpos('0123456789abcdef', lower(substr(digits, place, 1) COLLATE "C")) - 1;
  END LOOP;
  IF bits > 4294967295 THEN
    RETURN NULL;
  END IF;
  -- Few digits make a number of 16 bits, more of them or an "&" behind make one of 32.
  IF parts[3] = '' AND bits <= 65535
     AND (length(parts[1]) <= 4 OR length(parts[2]) <= 6) THEN
    RETURN CASE WHEN bits > 32767 THEN bits - 65536 ELSE bits END;
  END IF;
  RETURN CASE WHEN bits > 2147483647 THEN bits - 4294967296 ELSE bits END;
END $$;

-- The number that a text is as a whole; Null where it is none.
CREATE FUNCTION desktop.read_number(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  trimmed text := btrim(content, ' ');
  parts text[];
  around text;
  signs int;
  opened int;
  number float8;
BEGIN
  IF left(trimmed, 1) = '&' THEN
    IF trimmed ~ '^&(?:[Hh][0-9A-Fa-f]+|[Oo][0-7]+)&?$' THEN
      RETURN desktop.radix(trimmed);
    END IF;
    RETURN NULL;
  END IF;
  parts := regexp_match(trimmed, '^([-+$( ]*)([0-9][0-9,]*(?:\.[0-9]*)?|\.[0-9]+)'
                                 '(?:[EeDd]([-+]?[0-9]+))?([-+$) ]*)$');
  IF parts IS NULL THEN
    RETURN NULL;
  END IF;
  around := parts[1] || parts[4];
  signs := length(around) - length(translate(around, '+-', ''));
  opened := length(around) - length(replace(around, '(', ''));
  IF signs > 1 OR opened > 1 OR signs + opened > 1
     OR length(around) - length(replace(around, ')', '')) <> opened
     OR length(around) - length(replace(around, '$', '')) > 1 THEN
    RETURN NULL;
  END IF;
  number := desktop.decimal_value(replace(parts[2], ',', ''), parts[3]);
  IF number = 'Infinity' THEN
    RETURN NULL;
  END IF;
  RETURN CASE WHEN number <> 0 AND (opened = 1 OR strpos(around, '-') > 0) THEN -number
              ELSE number END;
END $$;

-- The number at the start of a text, 0 where none stands there.
CREATE FUNCTION desktop.val(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
  compact text := translate(content, E' \t\n', '');
  parts text[];
  number float8;
BEGIN
  IF left(compact, 1) = '&' THEN
    RETURN coalesce(desktop.radix(compact), 0);
  END IF;
  parts := regexp_match(compact, '^([-+]?)([0-9]+(?:\.[0-9]*)?|\.[0-9]+)(?:[EeDd]([-+]?[0-9]+))?');
  IF parts IS NULL THEN
    RETURN 0;
  END IF;
  number := desktop.decimal_value(parts[2], parts[3]);
  IF number = 'Infinity' THEN
    PERFORM desktop.refuse('Overflow');
  END IF;
  RETURN CASE WHEN parts[1] = '-' AND number <> 0 THEN -number ELSE number END;
END $$;

-- A bound text that stands where a number is compared: most are the text of a number.
CREATE FUNCTION desktop.bound_number(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  parts text[] := regexp_match(content, '^(-?)([0-9]+(?:\.[0-9]+)?)(?:e([-+]?[0-9]+))?$');
  number float8;
BEGIN
  IF parts IS NULL THEN
    RETURN 'Infinity';
  END IF;
  number := desktop.decimal_value(parts[2], parts[3]);
  RETURN CASE WHEN parts[1] = '-' THEN -number ELSE number END;
END $$;

-- Whether a text is a number beside a column of numbers.
CREATE FUNCTION desktop.is_plain_number(content text) RETURNS boolean
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT content ~ '^[ \t\n\v\f\r]*[-+]?(?:[0-9]+(?:\.[0-9]*)?|\.[0-9]+)(?:[Ee][-+]?[0-9]+)?[ \t\n\v\f\r]*$'
$$;

CREATE FUNCTION desktop.column_number(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  parts text[];
  number float8;
BEGIN
  IF NOT desktop.is_plain_number(content) THEN
    RETURN 'Infinity';
  END IF;
  parts := regexp_match(content, '([-+]?)([0-9.]+)(?:[Ee]([-+]?[0-9]+))?');
  number := desktop.decimal_value(parts[2], parts[3]);
  RETURN CASE WHEN parts[1] = '-' THEN -number ELSE number END;
END $$;

-- The number that a text is, as the dialect or as a column reads it.
CREATE FUNCTION desktop.text_number(content text) RETURNS float8
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT coalesce(desktop.read_number(content), desktop.column_number(content))
$$;

CREATE FUNCTION desktop.number_of(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  number float8 := desktop.read_number(content);
BEGIN
  IF number IS NULL THEN
    PERFORM desktop.refuse_mismatch(content, 'a number');
  END IF;
  RETURN number;
END $$;

-- What a number is beside a column of whole numbers, so that the column's index serves: itself, or
-- one that no column holds.
CREATE FUNCTION desktop.whole(number float8) RETURNS int8
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN number = trunc(number) AND abs(number) < 4e18 THEN number::int8
              WHEN number IS NOT NULL THEN 4611686018427387904 END
$$;

CREATE FUNCTION desktop.whole_from(number float8) RETURNS int8
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN abs(number) < 4e18 THEN ceil(number)::int8
              WHEN number > 0 THEN 4611686018427387904
              WHEN number IS NOT NULL THEN -4611686018427387904 END
$$;

CREATE FUNCTION desktop.whole_to(number float8) RETURNS int8
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN abs(number) < 4e18 THEN floor(number)::int8
              WHEN number > 0 THEN 4611686018427387904
              WHEN number IS NOT NULL THEN -4611686018427387904 END
$$;

-- A whole number of 32 bits, halves to the even neighbour.
CREATE FUNCTION desktop.rounded(number float8) RETURNS int4
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF round(number) BETWEEN -2147483648 AND 2147483647 THEN
    RETURN round(number)::int4;
  END IF;
  PERFORM desktop.refuse('Overflow');
END $$;

-- The server refuses results that are too small to be told from 0; the dialect takes them for 0. The
-- bound is the logarithm of half the smallest double.
CREATE FUNCTION desktop.multiply(one float8, other float8) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF least(abs(one), abs(other)) < 1e-16 AND one <> 0 AND other <> 0
     AND ln(abs(one)) + ln(abs(other)) < -745.1332191019411 THEN
    RETURN 0;
  END IF;
  RETURN one * other;
END $$;

CREATE FUNCTION desktop.divide(dividend float8, divisor float8) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF divisor = 0 THEN
    PERFORM desktop.refuse('division by zero');
  END IF;
  IF abs(dividend) < 1e-16 AND dividend <> 0
     AND ln(abs(dividend)) - ln(abs(divisor)) < -745.1332191019411 THEN
    RETURN 0;
  END IF;
  RETURN dividend / divisor;
END $$;

CREATE FUNCTION desktop.whole_divide(dividend float8, divisor float8) RETURNS int4
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF round(divisor) = 0 THEN
    PERFORM desktop.refuse('division by zero');
  END IF;
  RETURN desktop.rounded(trunc(round(dividend) / round(divisor)));
END $$;

CREATE FUNCTION desktop.modulo(dividend float8, divisor float8) RETURNS int4
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF round(divisor) = 0 THEN
    PERFORM desktop.refuse('division by zero');
  END IF;
  RETURN desktop.rounded(
    mod(desktop.exact(round(dividend)), desktop.exact(round(divisor)))::float8);
END $$;

CREATE FUNCTION desktop.power(base float8, exponent float8) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF (base = 0 AND exponent < 0) OR (base < 0 AND exponent <> trunc(exponent)) THEN
    PERFORM desktop.refuse('Overflow');
  END IF;
  IF base <> 0 AND exponent * ln(abs(base)) < -745.1332191019411 THEN
    RETURN 0;
  END IF;
  RETURN power(base, exponent);
END $$;
)sql";

}  // namespace qorhost::postgres
