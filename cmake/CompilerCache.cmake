# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later

# A compiler cache and precompiled headers never hit together; the headers are for builds that
# start from nothing.
option(MORVIX_PRECOMPILE "Precompile the headers of libraries, in place of the compiler cache" OFF)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER AND NOT MORVIX_PRECOMPILE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# morvix_precompile(TARGET): pays off from a few sources on.
function(morvix_precompile target)
    get_target_property(sources ${target} SOURCES)
    list(LENGTH sources count)
    if(MORVIX_PRECOMPILE AND count GREATER 3)
        target_precompile_headers(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/Precompiled.h")
    endif()
endfunction()
