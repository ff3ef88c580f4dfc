# The glyph files that resources/symbols.txt names, in KORVANTIS_GLYPHS; they lie under
# KORVANTIS_GLYPH_FOLDER.
set(KORVANTIS_GLYPH_FOLDER ${CMAKE_SOURCE_DIR}/node_modules/@phosphor-icons/core/assets)
if(NOT EXISTS ${KORVANTIS_GLYPH_FOLDER})
  message(FATAL_ERROR "The icon set is not there. Run script/setup, or `npm ci` in the root "
    "folder, and configure again.")
endif()

set(KORVANTIS_GLYPHS)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS resources/symbols.txt)
file(STRINGS resources/symbols.txt lines REGEX "^[^#]")
foreach(line IN LISTS lines)
  if(NOT line MATCHES "^([^ ]+) +([^ ]+)$")
    message(FATAL_ERROR "symbols.txt: '${line}' is not a symbol and a file")
  endif()
  set(glyph ${KORVANTIS_GLYPH_FOLDER}/${CMAKE_MATCH_2})
  if(NOT EXISTS ${glyph})
    message(FATAL_ERROR "symbols.txt: the icon set has no ${CMAKE_MATCH_2} for ${CMAKE_MATCH_1}")
  endif()
  list(APPEND KORVANTIS_GLYPHS ${glyph})
endforeach()
list(REMOVE_DUPLICATES KORVANTIS_GLYPHS)
