// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// What morvix-batch tells its caller. The numbers follow sysexits.h and, for signals, the shell's
/// 128 + number.
namespace ExitCode {

constexpr int allDone = 0;
constexpr int someFailed = 1;
constexpr int usage = 64;
constexpr int badInput = 65;
constexpr int noInput = 66;
constexpr int noFFmpeg = 69;
constexpr int ffmpegFailed = 70;
constexpr int cannotWrite = 73;
constexpr int signalBase = 128;

} // namespace ExitCode
