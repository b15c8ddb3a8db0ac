# Fills the bundle's Contents: artwork as PNG at one, two and three pixels to a point, fonts from their
# packages, interface descriptions and Info.xml.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)

set(contents ${bundle}/Contents)
set(resources ${contents}/Resources)
set(made "")

function(tovin_bundle_copy from to)
  add_custom_command(OUTPUT ${to}
    COMMAND ${CMAKE_COMMAND} -E copy ${from} ${to}
    DEPENDS ${from} VERBATIM)
  set(made ${made} ${to} PARENT_SCOPE)
endfunction()

foreach(picture auBeveledSeparator auGradientBackground auGraphBackground auKnobArrow auParamKnobBackground auRoomGround)
  set(svg ${CMAKE_CURRENT_SOURCE_DIR}/resources/${picture}.svg)
  foreach(scale 1 2 3)
    set(suffix "")
    if(scale GREATER 1)
      set(suffix "@${scale}x")
    endif()
    set(png ${resources}/${picture}${suffix}.png)
    add_custom_command(OUTPUT ${png}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${resources}
      COMMAND ${RSVG_CONVERT} -z ${scale} -o ${png} ${svg}
      DEPENDS ${svg} VERBATIM)
    list(APPEND made ${png})
  endforeach()
endforeach()

foreach(font dejavu/DejaVuSans.ttf dejavu/DejaVuSans-Bold.ttf league-spartan/LeagueSpartan-Regular.otf cabin/Cabin-Regular.otf)
  find_file(file_${font} NAMES ${font} PATHS /usr/share/fonts/truetype /usr/share/fonts/opentype NO_DEFAULT_PATH REQUIRED)
  cmake_path(GET font FILENAME name)
  tovin_bundle_copy(${file_${font}} ${resources}/Fonts/${name})
endforeach()

foreach(editor bpas dcmp dely filt lmtr lpas mcmp mrev pmeq sdly tmpt)
  tovin_bundle_copy(${CMAKE_CURRENT_SOURCE_DIR}/resources/${editor}_cocoaUI.xml ${resources}/${editor}_cocoaUI.xml)
endforeach()
tovin_bundle_copy(${CMAKE_CURRENT_SOURCE_DIR}/resources/Info.xml ${contents}/Info.xml)

set(TOVIN_BUNDLE_FILES ${made} CACHE INTERNAL "Everything in the bundle but its module")
add_custom_target(TovinAUGUIResources DEPENDS ${made})
