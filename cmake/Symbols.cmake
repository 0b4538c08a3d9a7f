# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later

# The icon set comes with the system; only the symbols that the table names are embedded.
set(MORVIX_ICON_SET "/usr/share/bootstrap-icons/svg" CACHE PATH "Folder of the icon set's SVG files")

# morvix_symbols(TARGET TABLE): embeds the table's symbols in TARGET as :/symbols/NAME.svg.
function(morvix_symbols target table)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${table}")
    file(STRINGS "${table}" rows REGEX "^[^#]")
    set(entries "")
    foreach(row IN LISTS rows)
        string(REGEX MATCH "^([^ ]+) +([^ ]+)$" matched "${row}")
        set(name "${CMAKE_MATCH_1}")
        set(file "${MORVIX_ICON_SET}/${CMAKE_MATCH_2}.svg")
        if(NOT matched OR NOT EXISTS "${file}")
            message(FATAL_ERROR "No drawing for the symbol row \"${row}\" (${file})")
        endif()
        string(APPEND entries "<file alias=\"${name}.svg\">${file}</file>\n")
    endforeach()
    set(collection "${CMAKE_CURRENT_BINARY_DIR}/symbols.qrc")
    file(CONFIGURE OUTPUT "${collection}" CONTENT
        "<RCC><qresource prefix=\"/symbols\">\n${entries}</qresource></RCC>\n")
    set_target_properties(${target} PROPERTIES AUTORCC ON)
    target_sources(${target} PRIVATE "${collection}")
endfunction()
