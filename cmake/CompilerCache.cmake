# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
