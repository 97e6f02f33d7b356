// Dates as the dialect reads, writes and computes them, in the server's own language.
#pragma once

#include <string_view>

namespace qorhost::postgres {

// A date is its canonical text everywhere. Day 0 of serial numbers is 30 December 1899; before it
// the fraction still counts forward.
inline constexpr std::string_view kDateFunctions = R"sql(
-- The hours, minutes and seconds of a text as HH:MM:SS; Null where it is no time.
CREATE FUNCTION desktop.read_time(content text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  parts text[] := regexp_match(content, '^([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?'
                                        '(?: *([AaPp])[Mm])?$');
  hour int := parts[1]::int;
  minute int := parts[2]::int;
  second int := coalesce(parts[3], '0')::int;
BEGIN
  IF parts IS NULL OR minute > 59 OR second > 59 OR hour > 23
     OR (parts[4] IS NOT NULL AND hour NOT BETWEEN 1 AND 12) THEN
    RETURN NULL;
  END IF;
  IF parts[4] IS NOT NULL THEN
    hour := hour % 12 + CASE WHEN parts[4] IN ('P', 'p') THEN 12 ELSE 0 END;
  END IF;
  RETURN lpad(hour::text, 2, '0') || ':' || lpad(minute::text, 2, '0') || ':'
    || lpad(second::text, 2, '0');
END $$;

-- The canonical date of a text; Null where it is no date.
CREATE FUNCTION desktop.read_date(content text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  months constant text[] := ARRAY['january', 'february', 'march', 'april', 'may', 'june', 'july',
                                  'august', 'september', 'october', 'november', 'december'];
  trimmed text := btrim(content, ' ');
  parts text[];
  name text;
  year int;
  month int;
  day int;
  clock text;
BEGIN
  IF trimmed ~ '^[^-/ T:]*:' THEN
    RETURN '1899-12-30 ' || desktop.read_time(trimmed);
  END IF;
  parts := regexp_match(trimmed, '^([0-9]{1,2})/([0-9]{1,2})/([0-9]{1,4})(?:(?: +|T)(.*))?$');
  IF parts IS NULL THEN
    parts := regexp_match(trimmed, '^([0-9]{4})-([0-9]{1,2})-([0-9]{1,2})(?:(?: +|T)(.*))?$');
    parts := ARRAY[parts[2], parts[3], parts[1], parts[4]];
  END IF;
  IF parts[1] IS NULL THEN
    parts := regexp_match(trimmed, '^([0-9]{1,2}) +([A-Za-z]+) +([0-9]{1,4})(?:(?: +|T)(.*))?$');
    name := lower(parts[2] COLLATE "C");
    SELECT number INTO month FROM unnest(months) WITH ORDINALITY AS known (month_name, number)
      WHERE name = month_name OR name = left(month_name, 3);
    parts := ARRAY[month::text, parts[1], parts[3], parts[4]];
  END IF;
  month := parts[1]::int;
  day := parts[2]::int;
  year := parts[3]::int;
  IF length(parts[3]) = 2 THEN
    year := year + CASE WHEN year < 30 THEN 2000 ELSE 1900 END;
  END IF;
  IF month IS NULL OR year NOT BETWEEN 100 AND 9999 OR month NOT BETWEEN 1 AND 12 OR day < 1
     OR day > extract(day FROM make_date(year, month, 1) + interval '1 month' - interval '1 day') THEN
    RETURN NULL;
  END IF;
  clock := CASE WHEN parts[4] IS NULL THEN '00:00:00' ELSE desktop.read_time(parts[4]) END;
  RETURN lpad(year::text, 4, '0') || '-' || lpad(month::text, 2, '0') || '-'
    || lpad(day::text, 2, '0') || ' ' || clock;
END $$;

-- The serial days of a canonical date.
CREATE FUNCTION desktop.serial_of(canonical text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  day int := make_date(substr(canonical, 1, 4)::int, substr(canonical, 6, 2)::int,
                       substr(canonical, 9, 2)::int) - make_date(1899, 12, 30);
  time float8 := (substr(canonical, 12, 2)::int * 3600 + substr(canonical, 15, 2)::int * 60
                  + substr(canonical, 18, 2)::int) / 86400::float8;
BEGIN
  RETURN CASE WHEN day < 0 THEN day - time ELSE day + time END;
END $$;

-- The canonical date of serial days in the calendar, rounded to the second.
CREATE FUNCTION desktop.canonical(serial float8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  day int8 := trunc(serial)::int8;
  time float8 := abs(serial - trunc(serial)) * 86400;
  seconds int8 := floor(time)::int8 + CASE WHEN time - floor(time) >= 0.5 THEN 1 ELSE 0 END;
BEGIN
  seconds := least(day * 86400 + seconds, 2958466::int8 * 86400 - 1);
  day := floor(seconds / 86400::numeric)::int8;
  seconds := seconds - day * 86400;
  RETURN to_char(make_date(1899, 12, 30) + day::int, 'YYYY-MM-DD') || ' '
    || lpad((seconds / 3600)::text, 2, '0') || ':' || lpad((seconds % 3600 / 60)::text, 2, '0')
    || ':' || lpad((seconds % 60)::text, 2, '0');
END $$;

CREATE FUNCTION desktop.is_serial(serial float8) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT serial >= -657434 AND serial < 2958465.99999
$$;

CREATE FUNCTION desktop.from_serial(serial float8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
  IF NOT desktop.is_serial(serial) THEN
    PERFORM desktop.refuse('a date outside the years 100 to 9999');
  END IF;
  RETURN desktop.canonical(serial);
END $$;

CREATE FUNCTION desktop.serial(content text) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  canonical text := desktop.read_date(content);
BEGIN
  IF canonical IS NULL THEN
    PERFORM desktop.refuse_mismatch(content, 'a date');
  END IF;
  RETURN desktop.serial_of(canonical);
END $$;

-- A value beside a date: the date that it is, else the text itself. A number that is no date, also
-- in a text, comes before every date.
CREATE FUNCTION desktop.date(content text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT coalesce(desktop.read_date(content),
                  CASE WHEN desktop.is_plain_number(content) THEN '' ELSE content END)
$$;

CREATE FUNCTION desktop.date(serial float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_serial(serial) THEN desktop.canonical(serial) ELSE '' END
$$;

-- The default text of a date; another text is itself.
CREATE FUNCTION desktop.date_text(content text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  canonical text := desktop.read_date(content);
  day text;
  hour int := substr(canonical, 12, 2)::int;
  clock text := CASE WHEN hour % 12 = 0 THEN 12 ELSE hour % 12 END || substr(canonical, 14)
    || CASE WHEN hour < 12 THEN ' AM' ELSE ' PM' END;
BEGIN
  IF canonical IS NULL THEN
    RETURN content;
  END IF;
  IF left(canonical, 10) = '1899-12-30' THEN
    RETURN clock;
  END IF;
  day := substr(canonical, 6, 2)::int || '/' || substr(canonical, 9, 2)::int || '/'
    || left(canonical, 4)::int;
  RETURN CASE WHEN substr(canonical, 12) = '00:00:00' THEN day ELSE day || ' ' || clock END;
END $$;

CREATE FUNCTION desktop.store_date(content text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT coalesce(desktop.read_date(content), desktop.refuse_mismatch(content, 'a date'))
$$;

CREATE FUNCTION desktop.store_date(serial float8) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.is_serial(serial) THEN desktop.canonical(serial)
              ELSE desktop.refuse_mismatch(desktop.number_text(serial), 'a date') END
$$;

-- The time, or one second after the date where that is not earlier.
CREATE FUNCTION desktop.later_than(now text, canonical text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
BEGIN
  IF canonical IS NULL THEN
    RETURN now;
  END IF;
  RETURN greatest(now COLLATE "C", to_char(
    make_timestamp(substr(canonical, 1, 4)::int, substr(canonical, 6, 2)::int,
                   substr(canonical, 9, 2)::int, substr(canonical, 12, 2)::int,
                   substr(canonical, 15, 2)::int, substr(canonical, 18, 2)::float8)
    + interval '1 second', 'YYYY-MM-DD HH24:MI:SS'));
END $$;
)sql";

}  // namespace qorhost::postgres
