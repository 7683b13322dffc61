# cmake -DNPM=… -DSOURCE=… -DWORK=… -DSTORE=… -DPAGES=… -P make_store.cmake
#
# Installs the packages of the lock file (npm checks each against the hash in it) and copies what
# the pages ask for, and nothing else, into STORE under the path of its URL. Each copy is checked
# against manifest.sha256, so a package that changed its contents, a page that asks for a new file
# and a file that nobody asks for any more all stop the build.
#
# With -DREWRITE=ON the manifest is written instead: for the day on which a version changes.
cmake_minimum_required(VERSION 3.25)
set(manifest "${SOURCE}/manifest.sha256")

# The URL paths that the pages name, both code themes written out.
function(find_page_paths result)
  set(paths)
  foreach(page IN LISTS PAGES)
    file(READ "${page}" text)
    string(REGEX MATCHALL "/npm/[^\"]+" found "${text}")
    foreach(path IN LISTS found)
      string(REGEX REPLACE "^/" "" path "${path}")
      foreach(theme light dark)
        string(REPLACE "{{code-theme}}" "${theme}" themed "${path}")
        list(APPEND paths "${themed}")
      endforeach()
    endforeach()
  endforeach()
  list(REMOVE_DUPLICATES paths)
  set(${result} ${paths} PARENT_SCOPE)
endfunction()

# "npm/katex@0.16.8/dist/katex.min.js" to "katex/dist/katex.min.js". The CDN minifies marked's UMD
# file on the fly; the package holds the full one only.
function(path_in_packages path result)
  string(REGEX REPLACE "^npm/" "" path "${path}")
  string(REGEX REPLACE "([^/])@[0-9][0-9.]*/" "\\1/" path "${path}")
  string(REPLACE "marked.umd.min.js" "marked.umd.js" path "${path}")
  set(${result} "${path}" PARENT_SCOPE)
endfunction()

function(copy_to_store path)
  path_in_packages("${path}" source)
  set(source "${WORK}/node_modules/${source}")
  if(NOT EXISTS "${source}")
    message(FATAL_ERROR "A page asks for ${path}, which no package holds: ${source}")
  endif()
  cmake_path(GET path PARENT_PATH folder)
  file(MAKE_DIRECTORY "${STORE}/${folder}")
  file(COPY_FILE "${source}" "${STORE}/${path}")
endfunction()

# The fonts that a style sheet of the store names, relative to it.
function(find_fonts path result)
  cmake_path(GET path PARENT_PATH folder)
  file(READ "${STORE}/${path}" text)
  string(REGEX MATCHALL "url\\([^)]+\\)" urls "${text}")
  set(fonts)
  foreach(url IN LISTS urls)
    string(REGEX REPLACE "^url\\(|\\)$" "" font "${url}")
    list(APPEND fonts "${folder}/${font}")
  endforeach()
  list(REMOVE_DUPLICATES fonts)
  set(${result} ${fonts} PARENT_SCOPE)
endfunction()

file(MAKE_DIRECTORY "${WORK}")
foreach(file package.json package-lock.json .npmrc)
  file(COPY_FILE "${SOURCE}/${file}" "${WORK}/${file}")
endforeach()
execute_process(COMMAND "${NPM}" ci --ignore-scripts --no-audit --no-fund --loglevel=error
                WORKING_DIRECTORY "${WORK}" RESULT_VARIABLE code OUTPUT_QUIET)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "npm could not install the client libraries (exit code ${code})")
endif()

file(REMOVE_RECURSE "${STORE}")
find_page_paths(paths)
foreach(path IN LISTS paths)
  copy_to_store("${path}")
  if(path MATCHES "katex\\.min\\.css$")
    find_fonts("${path}" fonts)
    foreach(font IN LISTS fonts)
      copy_to_store("${font}")
    endforeach()
    list(APPEND paths ${fonts})
  endif()
endforeach()

list(SORT paths)
set(listing "")
foreach(path IN LISTS paths)
  file(SHA256 "${STORE}/${path}" hash)
  string(APPEND listing "${hash}  ${path}\n")
endforeach()
if(REWRITE)
  file(WRITE "${manifest}" "${listing}")
endif()
file(READ "${manifest}" expected)
if(NOT listing STREQUAL expected)
  file(WRITE "${WORK}/manifest.sha256" "${listing}")
  message(FATAL_ERROR "The client libraries differ from the recorded ones: compare "
                      "${WORK}/manifest.sha256 with ${manifest}")
endif()
file(COPY_FILE "${manifest}" "${STORE}/manifest.sha256")

# The libraries hold others: their packages are those of the lock file, each with its licence.
# "node_modules/a/node_modules/@b/c" is "a_b_c" there.
function(package_id place result)
  string(REGEX REPLACE "(^|/)node_modules/@?" "\\1" id "${place}")
  string(REGEX REPLACE "[^A-Za-z0-9.-]" "_" id "${id}")
  set(${result} "${id}" PARENT_SCOPE)
endfunction()

# The texts of one package into the store; their names, or what is there instead.
function(copy_licenses place result)
  package_id("${place}" id)
  file(GLOB texts "${WORK}/${place}/[Ll][Ii][Cc][Ee][NnCc][CcSs][Ee]*" "${WORK}/${place}/COPYING*"
       "${WORK}/${place}/NOTICE*")
  list(FILTER texts EXCLUDE REGEX "\\.m?js$")
  set(names)
  foreach(text IN LISTS texts)
    cmake_path(GET text FILENAME name)
    string(REGEX REPLACE "^[Ll][Ii][Cc][Ee][NnCc][CcSs][Ee]|\\.(md|txt)$" "" kind "${name}")
    file(COPY_FILE "${text}" "${STORE}/licenses/${id}${kind}.txt")
    list(APPEND names "${id}${kind}.txt")
  endforeach()
  list(JOIN names ", " names)
  if(names STREQUAL "")
    set(names "no text of its own in the package")
  endif()
  set(${result} "${names}" PARENT_SCOPE)
endfunction()

# "name version [licence] where its source is: its texts".
function(describe_package place result)
  copy_licenses("${place}" texts)
  file(READ "${WORK}/${place}/package.json" package)
  foreach(field name version license)
    string(JSON ${field} ERROR_VARIABLE missing GET "${package}" ${field})
    if(missing)
      set(${field} "licence in its text")
    endif()
  endforeach()
  string(JSON source ERROR_VARIABLE isText GET "${package}" repository url)
  if(isText)
    string(JSON source ERROR_VARIABLE missing GET "${package}" repository)
  endif()
  set(${result} "${name} ${version} [${license}] ${source}: ${texts}\n" PARENT_SCOPE)
endfunction()

file(MAKE_DIRECTORY "${STORE}/licenses")
file(READ "${SOURCE}/package-lock.json" lock)
string(JSON count LENGTH "${lock}" packages)
math(EXPR last "${count} - 1")
set(libraries "")
foreach(index RANGE 1 ${last})  # the first is the list itself
  string(JSON place MEMBER "${lock}" packages ${index})
  describe_package("${place}" description)
  string(APPEND libraries "${description}")
endforeach()
file(WRITE "${STORE}/licenses/libraries.txt" "${libraries}")
