// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/UserPreset.h"

namespace {

// In the order of the variant's alternatives.
constexpr std::array actions{
    ActionKind::targetSize, ActionKind::convert, ActionKind::compress,
    ActionKind::extract,    ActionKind::gif,     ActionKind::enhance,
    ActionKind::merge,      ActionKind::split,   ActionKind::adjust,
};
static_assert(actions.size() == std::variant_size_v<PresetSpec>);

} // namespace

ActionKind actionOf(const PresetSpec &spec)
{
    return actions.at(spec.index());
}
