// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <exception>

/// A failure that crosses a layer. Its description is fixed English, for diagnostics; what the user
/// reads is chosen by whoever shows it.
class DescribedError : public std::exception
{
public:
    virtual QString errorDescription() const = 0;
};
