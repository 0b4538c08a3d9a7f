// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later
