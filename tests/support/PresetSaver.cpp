// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PresetStore.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int names = 40;
bool hasUnnamedFiles = true;

// The number of the latest save stands in one of the presets.
qint64 latestSave(const PresetStore &store)
{
    qint64 latest = 0;
    for (const UserPreset &preset : store.presets()) {
        latest = std::max(latest, std::get<SplitParams>(preset.spec).parts);
    }
    return latest;
}

void tell(qint64 save)
{
    std::printf("%lld\n", static_cast<long long>(save));
    std::fflush(stdout);
}

} // namespace

// Both take the place of the system's functions in the whole program.
extern "C" {

// A disk that takes its time over this step: a kill would otherwise hardly ever find a file on its
// way.
int rename(const char *from, const char *to) noexcept
{
    ::usleep(1000);
    return static_cast<int>(::syscall(SYS_rename, from, to));
}

// Some file systems know no files without a name.
int open64(const char *path, int flags, ...) // NOLINT(cert-dcl50-cpp)
{
    if (!hasUnnamedFiles && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    std::va_list further;
    va_start(further, flags);
    const auto mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(further, mode_t) : 0;
    va_end(further);
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

} // extern "C"

// PresetSaver FOLDER [COUNT [named]]: saves presets under 40 names in turn, so many times or for
// ever, each with the number of its save in `parts`; with the third word as on a file system whose
// files all have names. For tests of what becomes of the list when that goes wrong. It tells the
// number of the latest save, one a line, at the start and after each.
int main(int argc, char *argv[])
{
    hasUnnamedFiles = argc <= 3;
    PresetStore store(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    const qint64 first = latestSave(store) + 1;
    tell(first - 1);
    const qint64 count = argc > 2 ? std::atoi(argv[2]) : std::numeric_limits<int>::max();
    for (qint64 save = first; save < first + count; ++save) {
        SplitParams params;
        params.parts = save;
        store.upsert(QString::number(save % names), params, std::nullopt);
        tell(save);
    }
    return 0;
}
