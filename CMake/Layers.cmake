# One target per area, and its link list is the architecture: a header can be included only by a target that links
# the area that owns it. Each area is published through a directory of its own that holds nothing but a link to it,
# so that there is no common root through which a wrong include would still be found.

# quillo_area(<Family>/<Area> [DEPENDS <target>...] [PRIVATE <target>...])
# makes the target <Family>.<Area> from every source in the current folder.
function(quillo_area path)
  cmake_parse_arguments(AREA "" "" "DEPENDS;PRIVATE" ${ARGN})
  string(REPLACE "/" "." name ${path})
  get_filename_component(family ${path} DIRECTORY)
  set(published "${CMAKE_BINARY_DIR}/areas/${name}")
  file(MAKE_DIRECTORY "${published}/${family}")
  file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${published}/${path}" SYMBOLIC)

  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  if(sources)
    add_library(${name} STATIC ${sources} ${headers})
    set(scope PUBLIC)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} "${published}")
  target_link_libraries(${name} ${scope} ${AREA_DEPENDS})
  if(sources)
    target_link_libraries(${name} PRIVATE ${AREA_PRIVATE})
  endif()
endfunction()
