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
    QT_NO_KEYWORDS QT_NO_FOREACH
    # Some libraries have whoever uses them define it; with all alike, one precompiled header fits.
    _REENTRANT)

# Watched is what users get. Tests compile three times as long with instruments and need none, but
# for the thread sanitizer, which has to see both sides of every exchange.
add_library(morvix_instruments INTERFACE)
if(MORVIX_SANITIZE)
    target_compile_options(morvix_instruments INTERFACE
        -fsanitize=${MORVIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # Instrumented code draws false warnings of this kind out of Qt's headers.
        -Wno-maybe-uninitialized)
    target_link_options(morvix_options INTERFACE -fsanitize=${MORVIX_SANITIZE})
    if(MORVIX_SANITIZE MATCHES thread)
        target_link_libraries(morvix_options INTERFACE morvix_instruments)
    endif()
endif()
if(MORVIX_COVERAGE)
    target_compile_options(morvix_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(morvix_options INTERFACE --coverage)
endif()

morvix_add_precompiled(layer morvix_instruments)

# morvix_layer(NAME SOURCES… LINKS…): one static library for one folder of src/.
function(morvix_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${LAYER_SOURCES})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC morvix_options ${LAYER_LINKS})
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:morvix_instruments>)
    morvix_precompile(${name} layer)
endfunction()
