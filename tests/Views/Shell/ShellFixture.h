// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Shell/RootView.h"
#include "Views/ViewFixture.h"

/// The whole content of the window over made-up films, at its least size.
class ShellFixture : public ViewFixture
{
protected:
    static constexpr QSize leastSize{920, 640};

    void open(const Start &settings = Start(), QSize size = leastSize)
    {
        start(settings);
        show(new RootView(context(), [this](bool visible) { m_dropZoneCalls += visible; }), size);
    }

    /// The one visible widget of that kind; null when there is none or more than one.
    template <typename Widget> Widget *only()
    {
        QList<Widget *> visible;
        for (Widget *widget : m_window->findChildren<Widget *>()) {
            if (widget->isVisible()) {
                visible += widget;
            }
        }
        return visible.size() == 1 ? visible.first() : nullptr;
    }

    /// What the floating drop zone was told, in order.
    QList<bool> m_dropZoneCalls;
};
