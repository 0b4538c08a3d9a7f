// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// The small window that floats above the others and takes drops. Main thread only.
class DropZonePanel
{
public:
    virtual ~DropZonePanel() = default;

    /// Shows it above all windows without taking the focus, where it stood last.
    virtual void orderFront() = 0;

    /// Takes it off the screen; it keeps its place.
    virtual void orderOut() = 0;
};
