# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later

# The compile rules that every target of ours shares.
add_library(morvix_options INTERFACE)
target_compile_features(morvix_options INTERFACE cxx_std_20)
target_compile_options(morvix_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wconversion -Wsign-conversion -Wdouble-promotion -Wold-style-cast -Wcast-qual
    -Wformat=2 -Wimplicit-fallthrough -Werror
    # Planning sums sit on truncation edges: a fused multiply-add would move them.
    -ffp-contract=off)
target_compile_definitions(morvix_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_KEYWORDS QT_NO_FOREACH)

if(MORVIX_SANITIZE)
    target_compile_options(morvix_options INTERFACE
        -fsanitize=${MORVIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # Instrumented code draws false warnings of this kind out of Qt's headers.
        -Wno-maybe-uninitialized)
    target_link_options(morvix_options INTERFACE -fsanitize=${MORVIX_SANITIZE})
endif()
if(MORVIX_COVERAGE)
    target_compile_options(morvix_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(morvix_options INTERFACE --coverage)
endif()

# morvix_layer(NAME SOURCES… LINKS…): one static library for one folder of src/.
function(morvix_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${LAYER_SOURCES})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC morvix_options ${LAYER_LINKS})
endfunction()
