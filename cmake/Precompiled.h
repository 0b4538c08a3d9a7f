// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What most sources include of libraries. Sources still include what they use, and no more than
// their target links: builds without this header prove it.

#pragma once

#include <QtCore/QtCore>
#ifdef QT_WIDGETS_LIB
#include <QtWidgets/QtWidgets>
#endif

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#ifdef MORVIX_WITH_GTEST
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#endif
