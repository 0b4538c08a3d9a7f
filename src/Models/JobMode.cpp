// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobMode.h"

namespace {

// In the order of the variant's alternatives; `play` makes no job and has none.
constexpr std::array actions{
    ActionKind::targetSize, ActionKind::convert, ActionKind::compress, ActionKind::extract,
    ActionKind::trim,       ActionKind::gif,     ActionKind::enhance,  ActionKind::merge,
    ActionKind::split,      ActionKind::adjust,
};
static_assert(actions.size() == std::variant_size_v<JobMode>);

} // namespace

ActionKind actionOf(const JobMode &mode)
{
    return actions.at(mode.index());
}

QString l10nKey(const JobMode &mode)
{
    return titleKey(actionOf(mode));
}

QString symbolName(const JobMode &mode)
{
    return symbolName(actionOf(mode));
}
