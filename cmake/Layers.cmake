# The arrows between the folders, as the compiler sees them: a target finds only the headers of the layers
# that it names here (and of those that these know), so an include against an arrow does not compile.

find_package(PkgConfig REQUIRED)

# tovin_layer(NAME sources... KNOWS layers...): one layer of the platform, its headers in its own folder.
function(tovin_layer name)
  cmake_parse_arguments(LAYER "" "" "KNOWS" ${ARGN})
  add_library(${name} STATIC ${LAYER_UNPARSED_ARGUMENTS})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${LAYER_KNOWS})
endfunction()

# tovin_uses_platform(TARGET layers...): links the platform's shared library, but sees only these layers.
function(tovin_uses_platform target)
  foreach(layer ${ARGN})
    target_include_directories(${target} PRIVATE $<TARGET_PROPERTY:${layer},INTERFACE_INCLUDE_DIRECTORIES>)
  endforeach()
  target_link_libraries(${target} PRIVATE TovinPlatform)
endfunction()
