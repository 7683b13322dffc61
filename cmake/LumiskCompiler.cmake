# One place for what every target is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 sees overlapping copies in `"text" + std::string` where there are none (its bug 105651).
  add_compile_options(-Wno-restrict)
endif()

if(LUMISK_SANITIZE)
  add_compile_options(-fsanitize=${LUMISK_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${LUMISK_SANITIZE})
  if(LUMISK_DESKTOP)
    # The engine was built without type information. Where it uses a template of the C++ library that
    # this program has too, the linker gives it the program's, whose check finds no type.
    add_compile_options(-fno-sanitize=vptr)
  endif()
endif()

# lumisk_without_sanitizer(TARGET)
#
# For what another program loads, which has no sanitizer in it.
function(lumisk_without_sanitizer target)
  if(LUMISK_SANITIZE)
    target_compile_options(${target} PRIVATE -fno-sanitize=all)
    target_link_options(${target} PRIVATE -fno-sanitize=all)
  endif()
endfunction()
