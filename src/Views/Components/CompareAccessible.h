// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class CompareArea;

/// Has assistive technology see comparing areas as the sliders that they are. Any number of calls
/// are as good as one. Main thread only.
void installCompareAccessible();

/// Tells it that the divider has moved.
void tellAssistants(CompareArea &area);
