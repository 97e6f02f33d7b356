// The pictures of Format, in the server's own language.
#pragma once

#include <string_view>

namespace qorhost::postgres {

inline constexpr std::string_view kPictureFunctions = R"sql(
-- Two places behind the point, of the 15 digits that a number shows.
CREATE FUNCTION desktop.two_places(number float8, shift int, grouped boolean) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  rounded numeric := round(desktop.shown_digits(number)::numeric * 10::numeric ^ shift, 2);
  digits text := abs(rounded)::text;
  place int := length(digits) - 3;
BEGIN
  WHILE grouped AND place > 3 LOOP
    place := place - 3;
    digits := left(digits, place) || ',' || substr(digits, place + 1);
  END LOOP;
  RETURN CASE WHEN rounded < 0 THEN '-' ELSE '' END || digits;
END $$;

CREATE FUNCTION desktop.scientific(number float8) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  shown text := abs(desktop.shown_digits(number)::numeric)::text;
  digits text := rpad(ltrim(replace(shown, '.', ''), '0'), 4, '0');
  whole text := split_part(shown, '.', 1);
  power int := CASE WHEN whole <> '0' THEN length(whole) - 1
                    ELSE -1 - length(substring(shown FROM '^0\.(0*)')) END;
  rounded int := left(digits, 3)::int
    + CASE WHEN substr(digits, 4, 1) >= '5' COLLATE "C" THEN 1 ELSE 0 END;
BEGIN
  IF number = 0 THEN
    power := 0;
  END IF;
  IF rounded = 1000 THEN
    rounded := 100;
    power := power + 1;
  END IF;
  digits := lpad(rounded::text, 3, '0');
  RETURN CASE WHEN number < 0 THEN '-' ELSE '' END || left(digits, 1) || '.' || substr(digits, 2)
    || 'E' || CASE WHEN power < 0 THEN '-' ELSE '+' END
    || lpad(abs(power)::text, greatest(2, length(abs(power)::text)), '0');
END $$;

-- At least that many digits, halves away from zero.
CREATE FUNCTION desktop.zeros(number float8, width int) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  size float8 := abs(number);
  below float8 := floor(size);
  digits text;
BEGIN
  IF size - below >= 0.5 THEN
    below := below + 1;
  END IF;
  digits := desktop.exact(below)::text;
  RETURN CASE WHEN number < 0 AND below > 0 THEN '-' ELSE '' END
    || lpad(digits, greatest(width, length(digits)), '0');
END $$;

-- A number after a named format; Null where there is none of that name, or no number.
CREATE FUNCTION desktop.named_number(number float8, name text) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
  amount text;
BEGIN
  IF number IS NULL THEN
    RETURN NULL;
  END IF;
  CASE name
    WHEN 'general number' THEN RETURN desktop.number_text(number);
    WHEN 'fixed' THEN RETURN desktop.two_places(number, 0, false);
    WHEN 'standard' THEN RETURN desktop.two_places(number, 0, true);
    WHEN 'percent' THEN RETURN desktop.two_places(number, 2, false) || '%';
    WHEN 'scientific' THEN RETURN desktop.scientific(number);
    WHEN 'yes/no' THEN RETURN CASE WHEN number <> 0 THEN 'Yes' ELSE 'No' END;
    WHEN 'true/false' THEN RETURN CASE WHEN number <> 0 THEN 'True' ELSE 'False' END;
    WHEN 'on/off' THEN RETURN CASE WHEN number <> 0 THEN 'On' ELSE 'Off' END;
    WHEN 'currency' THEN
      amount := desktop.two_places(number, 0, true);
      RETURN CASE WHEN left(amount, 1) = '-' THEN '($' || substr(amount, 2) || ')'
                  ELSE '$' || amount END;
    ELSE RETURN NULL;
  END CASE;
END $$;

-- The length of the part of a date that begins a picture; 0 when none does.
CREATE FUNCTION desktop.date_part_size(picture text) RETURNS int
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  letter text := lower(left(picture, 1) COLLATE "C");
  size int;
BEGIN
  IF left(picture, 5) = 'AM/PM' THEN
    RETURN 5;
  END IF;
  size := length(picture) - length(ltrim(lower(picture COLLATE "C"), letter));
  IF (letter IN ('d', 'm') AND size <= 4) OR (letter = 'y' AND size IN (2, 4))
     OR (letter IN ('h', 'n', 's') AND size <= 2) THEN
    RETURN size;
  END IF;
  RETURN 0;
END $$;

CREATE FUNCTION desktop.is_date_picture(picture text) RETURNS boolean
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  rest text := picture;
  has_part boolean := false;
  size int;
BEGIN
  WHILE rest <> '' LOOP
    IF left(rest, 1) ~ '[- /.,:]' THEN
      size := 1;
    ELSE
      size := desktop.date_part_size(rest);
      has_part := true;
    END IF;
    IF size = 0 THEN
      RETURN false;
    END IF;
    rest := substr(rest, size + 1);
  END LOOP;
  RETURN has_part;
END $$;

-- A canonical date after a picture. Minutes are written for "m" directly behind an hour.
CREATE FUNCTION desktop.date_picture(canonical text, picture text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  months constant text[] := ARRAY['January', 'February', 'March', 'April', 'May', 'June', 'July',
                                  'August', 'September', 'October', 'November', 'December'];
  days constant text[] := ARRAY['Sunday', 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday',
                                'Saturday'];
  year int := left(canonical, 4)::int;
  month int := substr(canonical, 6, 2)::int;
  day int := substr(canonical, 9, 2)::int;
  hour int := substr(canonical, 12, 2)::int;
  minute int := substr(canonical, 15, 2)::int;
  second int := substr(canonical, 18, 2)::int;
  half_days boolean := strpos(upper(picture COLLATE "C"), 'AM/PM') > 0;
  after_hour boolean := false;
  rest text := picture;
  letter text;
  size int;
  number int;
  name text;
  written text := '';
BEGIN
  WHILE rest <> '' LOOP
    letter := lower(left(rest, 1) COLLATE "C");
    size := length(rest) - length(ltrim(lower(rest COLLATE "C"), letter));
    number := NULL;
    name := NULL;
    IF upper(left(rest, 5) COLLATE "C") = 'AM/PM' THEN
      written := written || CASE WHEN hour < 12 THEN 'AM' ELSE 'PM' END;
      size := 5;
      after_hour := false;
    ELSIF letter NOT IN ('d', 'm', 'y', 'h', 'n', 's') THEN
      written := written || left(rest, 1);
      size := 1;
    ELSE
      CASE letter
        WHEN 'd' THEN
          size := least(size, 4);
          number := day;
          name := days[extract(dow FROM make_date(year, month, day))::int + 1];
        WHEN 'm' THEN
          size := least(size, 4);
          number := CASE WHEN after_hour AND size <= 2 THEN minute ELSE month END;
          name := months[month];
        WHEN 'y' THEN
          IF size < 4 THEN
            size := least(size, 2);
          ELSE
            size := 4;
          END IF;
          number := CASE WHEN size = 4 THEN year ELSE year % 100 END;
        WHEN 'h' THEN
          size := least(size, 2);
          number := CASE WHEN NOT half_days THEN hour WHEN hour % 12 = 0 THEN 12
                         ELSE hour % 12 END;
        WHEN 'n' THEN
          size := least(size, 2);
          number := minute;
        ELSE
          size := least(size, 2);
          number := second;
      END CASE;
      IF name IS NOT NULL AND size > 2 THEN
        written := written || CASE WHEN size = 3 THEN left(name, 3) ELSE name END;
      ELSIF letter = 'y' AND size = 1 THEN
        written := written || left(rest, 1);
      ELSE
        written := written || lpad(number::text, greatest(size, length(number::text)), '0');
      END IF;
      after_hour := letter = 'h';
    END IF;
    rest := substr(rest, size + 1);
  END LOOP;
  RETURN written;
END $$;

CREATE FUNCTION desktop.in_calendar(serial float8) RETURNS boolean
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
  SELECT serial > -657435 AND serial < 2958466
$$;

-- A value after a picture: one of a text, a number and a canonical date, the others Null.
CREATE FUNCTION desktop.format_one(content text, number float8, canonical text, picture text)
RETURNS text LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
  name text := lower(picture COLLATE "C");
  plain text := CASE WHEN canonical IS NOT NULL THEN desktop.date_text(canonical)
                     WHEN number IS NOT NULL THEN desktop.number_text(number) ELSE content END;
  read_number float8 := coalesce(number, desktop.serial_of(canonical),
                                 desktop.read_number(content));
  read_date text := coalesce(canonical, desktop.read_date(content));
  date_format text;
BEGIN
  IF plain IS NULL THEN
    RETURN '';
  END IF;
  IF picture IS NULL THEN
    RETURN plain;
  END IF;
  IF desktop.named_number(0, name) IS NOT NULL THEN
    IF read_number IS NULL AND lower(content COLLATE "C") IN ('true', 'false') THEN
      read_number := CASE WHEN lower(content COLLATE "C") = 'true' THEN -1 ELSE 0 END;
    END IF;
    RETURN coalesce(
      desktop.named_number(coalesce(read_number, desktop.serial_of(read_date)), name), plain);
  END IF;
  date_format := CASE name
    WHEN 'general date' THEN ''
    WHEN 'long date' THEN 'dddd, mmmm d, yyyy'
    WHEN 'medium date' THEN 'dd-mmm-yy'
    WHEN 'short date' THEN 'm/d/yyyy'
    WHEN 'long time' THEN 'h:nn:ss AM/PM'
    WHEN 'medium time' THEN 'hh:nn AM/PM'
    WHEN 'short time' THEN 'hh:nn'
    ELSE picture END;
  IF date_format = picture THEN
    IF picture = '' THEN
      RETURN plain;
    END IF;
    IF picture ~ '^0+$' THEN
      RETURN coalesce(
        desktop.zeros(coalesce(read_number, desktop.serial_of(read_date)), length(picture)), plain);
    END IF;
    IF NOT desktop.is_date_picture(picture) THEN
      PERFORM desktop.refuse('Format does not know the picture ' || desktop.quoted(picture)
        || ': it takes parts of dates such as ''dd mm yyyy'', zeros such as ''000'', and named '
           'formats such as ''Short Date''');
    END IF;
  END IF;
  IF read_date IS NULL AND read_number IS NOT NULL THEN
    IF desktop.in_calendar(read_number) THEN
      read_date := desktop.canonical(read_number);
    ELSIF number IS NOT NULL THEN
      PERFORM desktop.refuse('Overflow');
    END IF;
  END IF;
  IF read_date IS NULL THEN
    RETURN plain;
  END IF;
  RETURN CASE WHEN date_format = '' THEN desktop.date_text(read_date)
              ELSE desktop.date_picture(read_date, date_format) END;
END $$;

CREATE FUNCTION desktop.format(content text, picture text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT desktop.format_one(content, NULL, NULL, picture)
$$;

CREATE FUNCTION desktop.format(number float8, picture text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT desktop.format_one(NULL, number, NULL, picture)
$$;

CREATE FUNCTION desktop.format_date(content text, picture text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$
  SELECT CASE WHEN desktop.read_date(content) IS NULL
              THEN desktop.format_one(content, NULL, NULL, picture)
              ELSE desktop.format_one(NULL, NULL, desktop.read_date(content), picture) END
$$;
)sql";

}  // namespace qorhost::postgres
