// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// libav writes what it thinks of a film to standard error, where nobody reads it. From the first
/// call on it does so no more, in the whole program. Any thread.
void silenceAvLog();
