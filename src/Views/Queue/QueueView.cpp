// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Queue/QueueView.h"

QueueView::QueueView(const ViewContext &context, QWidget *parent) : View(context, parent) {}

void QueueView::refresh() {}
