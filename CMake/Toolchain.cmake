# One compiler for everyone: g++ 12 destroys the temporaries of a co_await expression twice, so it is refused.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang" OR CMAKE_CXX_COMPILER_VERSION VERSION_LESS 19)
  message(FATAL_ERROR "Quillo needs clang 19 or newer; configure with one of the presets (cmake --preset dev).")
endif()

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wimplicit-fallthrough -Wextra-semi -Werror -fno-omit-frame-pointer)
# libstdc++ 12 uses its own deprecated std::get_temporary_buffer in std::stable_sort.
add_compile_options(-Wno-deprecated-declarations)
# No program names a library that it does not use: it would be loaded at every start.
add_link_options(-fuse-ld=lld -Wl,--as-needed)

# Reports and coverage name files from the project's root, and caches hit from any checkout.
add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=)

find_program(QUILLO_CCACHE ccache)
if(QUILLO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${QUILLO_CCACHE})
endif()

set(QUILLO_SANITIZERS "" CACHE STRING "Value for -fsanitize, for example address,undefined or thread")
if(QUILLO_SANITIZERS)
  add_compile_options(-fsanitize=${QUILLO_SANITIZERS} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILLO_SANITIZERS})
  if(QUILLO_SANITIZERS MATCHES "thread")
    # ThreadSanitizer does not understand Asio's fenced blocks and reports races that are none.
    add_compile_definitions(ASIO_DISABLE_FENCED_BLOCK BOOST_ASIO_DISABLE_FENCED_BLOCK)
  endif()
endif()

option(QUILLO_FUZZERS "Build the fuzz targets with the fuzzer" OFF)
if(QUILLO_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

option(QUILLO_COVERAGE "Measure source coverage" OFF)
if(QUILLO_COVERAGE)
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate)
endif()
