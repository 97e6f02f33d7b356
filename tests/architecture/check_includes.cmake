# cmake -P check_includes.cmake -- TREE [EXPECTED]
# Checks the sources under TREE: which folder includes which, that an engine's headers are known to
# its own folder alone, that no two names of some folders include each other, and that no platform
# macro is named outside com/. Prints each breach and fails when there is one; with EXPECTED, a file of the breaches that there should be, fails when those found
# differ.
cmake_minimum_required(VERSION 3.25)

# Folders and, after the colon, what they may include beside their own files. A folder inside
# another one stands before it: the first that a path begins with counts.
set(areas
  "frame:"
  "credentials:frame"
  "dircodes:frame"
  "reports:frame"
  "trace:frame credentials dircodes reports"
  "contract:"
  "com:frame credentials dircodes reports trace"
  "host/dialect:frame"
  "host/screens:frame"
  "host/store/sqlite:frame host/dialect host/store"
  "host/store/postgres:frame host/dialect host/store"
  "host/store/engines:frame host/dialect host/store host/store/sqlite host/store/postgres"
  "host/store:frame host/dialect"
  "host/components:frame host/dialect host/store"
  "host/unit:frame dircodes"
  "host/files/desktop_file:frame host/dialect host/files"
  "host/files:frame host/dialect"
  "host/desks:frame credentials dircodes reports trace host/dialect host/store host/store/engines host/components host/screens host/unit host/files host/files/desktop_file"
  "host/terminal:frame host/files host/desks"
  "host/tour:frame host/store host/screens host/unit host/files host/desks host/terminal"
  "host/desktop:frame host/store host/screens host/unit host/files host/desks"
  "host/cli:frame host/unit host/files host/desks host/terminal host/tour"
  "bench/com:*"
  "bench:frame credentials dircodes reports trace host/dialect host/store host/store/sqlite host/store/postgres host/store/engines host/components host/screens host/unit host/files host/files/desktop_file host/desks host/desktop tests"
  "examples:*"
  "tests:*")

# Folders in which no two names (a header with its source) include each other.
set(one_way
  host/dialect host/store host/store/engines host/components host/screens host/unit host/files
  host/files/desktop_file host/desks host/terminal host/tour host/desktop host/cli)

# Headers of database engines, and of libraries that read other databases, and, after the colon, the folder
# that knows them. Benchmarks, which measure against the engine itself, and tests may include them, too.
set(engine_headers
  "mdbtools.h:host/files/desktop_file"
  "sqlite3.h:host/store/sqlite"
  "libpq-fe.h:host/store/postgres")
set(users_of_engines bench tests)

# Folders that know the widgets' headers: <QWidget>, <QtTest/QTest>.
set(users_of_widgets host/desktop tests bench)

# The library's folders use the standard library alone.
set(library frame credentials dircodes reports trace contract)
set(standard_headers
  algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts
  condition_variable coroutine deque exception execution filesystem format forward_list fstream
  functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list
  locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
  ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack
  stdexcept stop_token streambuf string string_view syncstream system_error thread tuple type_traits
  typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
  cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef
  cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype)

set(platform_macros
  "_WIN32|_WIN64|WIN32|WIN64|_MSC_VER|__MINGW[A-Z0-9_]*|__CYGWIN__|__linux__|__linux|linux|__unix__|__unix|unix|__APPLE__|__FreeBSD__|__ANDROID__")

# The area that `path` (relative to the tree) lies in, or "" when it lies in none.
function(area_of path result)
  set(${result} "" PARENT_SCOPE)
  foreach(area ${areas})
    string(REGEX REPLACE ":.*" "" folder "${area}")
    string(FIND "${path}" "${folder}/" position)
    if(position EQUAL 0)
      set(${result} "${folder}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

# What the folder `folder` may include beside itself.
function(allowed_in folder result)
  foreach(area ${areas})
    if(area MATCHES "^${folder}:(.*)$")
      string(REPLACE " " ";" allowed "${CMAKE_MATCH_1}")
      set(${result} "${allowed}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

# The folder of the engine that `header` belongs to, or "" when it belongs to none.
function(engine_of header result)
  set(${result} "" PARENT_SCOPE)
  foreach(engine ${engine_headers})
    if(engine MATCHES "^${header}:(.*)$")
      set(${result} "${CMAKE_MATCH_1}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

macro(breach text)
  list(APPEND breaches "${path}: ${text}")
endmacro()

function(check_file tree path)
  area_of("${path}" area)
  if(area STREQUAL "")
    breach("lies in a folder that this check does not know")
    set(breaches ${breaches} PARENT_SCOPE)
    return()
  endif()
  allowed_in(${area} allowed)

  file(STRINGS ${tree}/${path} includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line ${includes})
    if(line MATCHES "include[ \t]*\"([^\"]+)\"")
      set(name "${CMAKE_MATCH_1}")
      area_of("${name}" included)
      if(allowed STREQUAL "*")
        # Tests may use everything.
      elseif(included STREQUAL "")
        breach("includes \"${name}\", which is no path from the root")
      elseif(NOT included STREQUAL area AND NOT included IN_LIST allowed)
        breach("includes \"${name}\", and ${area} may not use ${included}")
      endif()
      if(included STREQUAL area AND area IN_LIST one_way)
        string(REGEX REPLACE "\\.[a-z]+$" "" from "${path}")
        string(REGEX REPLACE "\\.[a-z]+$" "" to "${name}")
        if(NOT from STREQUAL to)
          list(APPEND uses "${from}>${to}")
        endif()
      endif()
    elseif(line MATCHES "include[ \t]*<([^>]+)>")
      set(name "${CMAKE_MATCH_1}")
      if(area IN_LIST library AND NOT name IN_LIST standard_headers)
        breach("includes <${name}>, which is not of the standard library")
      endif()
      if(name MATCHES "^Q[A-Zt]" AND NOT area IN_LIST users_of_widgets)
        breach("includes <${name}>, which only host/desktop may know")
      endif()
      engine_of("${name}" engine)
      if(NOT engine STREQUAL "" AND NOT area STREQUAL engine AND NOT area IN_LIST users_of_engines)
        breach("includes <${name}>, which only ${engine} may know")
      endif()
    else()
      breach("has an include that cannot be read: ${line}")
    endif()
  endforeach()

  if(NOT area STREQUAL "com")
    file(STRINGS ${tree}/${path} conditionals
         REGEX "^[ \t]*#.*[^A-Za-z0-9_](${platform_macros})($|[^A-Za-z0-9_])")
    if(conditionals)
      breach("asks which platform it is on")
    endif()
  endif()
  set(breaches ${breaches} PARENT_SCOPE)
  set(uses ${uses} PARENT_SCOPE)
endfunction()

# Arguments after "--".
set(arguments "")
foreach(i RANGE ${CMAKE_ARGC})
  if(seen)
    list(APPEND arguments "${CMAKE_ARGV${i}}")
  elseif("${CMAKE_ARGV${i}}" STREQUAL "--")
    set(seen TRUE)
  endif()
endforeach()
list(FILTER arguments EXCLUDE REGEX "^$")
list(POP_FRONT arguments tree expected_file)
if(NOT tree)
  message(FATAL_ERROR "Name the tree to check: cmake -P check_includes.cmake -- TREE [EXPECTED]")
endif()

file(GLOB_RECURSE paths RELATIVE ${tree}
     ${tree}/frame/*.h ${tree}/frame/*.cpp
     ${tree}/credentials/*.h ${tree}/credentials/*.cpp
     ${tree}/dircodes/*.h ${tree}/dircodes/*.cpp
     ${tree}/reports/*.h ${tree}/reports/*.cpp
     ${tree}/trace/*.h ${tree}/trace/*.cpp
     ${tree}/contract/*.h ${tree}/contract/*.cpp
     ${tree}/com/*.h ${tree}/com/*.cpp
     ${tree}/host/*.h ${tree}/host/*.cpp
     ${tree}/bench/*.h ${tree}/bench/*.cpp
     ${tree}/examples/*.h ${tree}/examples/*.cpp
     ${tree}/tests/*.h ${tree}/tests/*.cpp)
list(FILTER paths EXCLUDE REGEX "^tests/architecture/sample/")
list(LENGTH paths count)
if(count EQUAL 0)
  message(FATAL_ERROR "No sources under ${tree}")
endif()

set(breaches "")
set(uses "")  # "host/desks/a>host/desks/b"
foreach(path ${paths})
  check_file(${tree} ${path})
endforeach()
list(REMOVE_DUPLICATES uses)
foreach(use ${uses})
  string(REPLACE ">" ";" names "${use}")
  list(GET names 0 path)
  list(GET names 1 other)
  if("${other}>${path}" IN_LIST uses AND path STRLESS other)
    breach("and ${other} include each other")
  endif()
endforeach()

if(expected_file)
  file(STRINGS ${expected_file} expected)
  set(missing ${expected})
  list(REMOVE_ITEM missing ${breaches} "")
  set(surplus ${breaches})
  list(REMOVE_ITEM surplus ${expected} "")
  list(LENGTH expected expected_count)
  if(missing OR surplus OR expected_count EQUAL 0)
    list(JOIN missing "\n  " missing)
    list(JOIN surplus "\n  " surplus)
    message(FATAL_ERROR "Not found:\n  ${missing}\nFound beyond that:\n  ${surplus}")
  endif()
  message(STATUS "${count} files, and all ${expected_count} breaches found")
elseif(breaches)
  list(JOIN breaches "\n  " breaches)
  message(FATAL_ERROR "Sources break the order of the folders:\n  ${breaches}")
else()
  message(STATUS "${count} files keep the order of the folders")
endif()
