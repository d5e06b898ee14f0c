// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Defaults.h"

#include <functional>
#include <vector>

namespace settings {

// Changes to the layout of the preferences file are made by migrations,
// never by readers that guess at old forms. schemaVersion records the last
// layout a file was brought to; a file without it is version 0.
struct Migration
{
    int toVersion = 0; // the version the file has after this step
    std::function<void(Defaults&)> apply;
};

// The layout this build writes. Version 1 is the first layout; it needs no
// step from version 0.
inline constexpr int currentSchemaVersion = 1;

[[nodiscard]] const std::vector<Migration>& migrations();

// Runs, in order, every step above the file's version up to target, then
// stores target as schemaVersion. A file from a newer build is left as it
// is. Answers the version the file has afterwards.
int migrate(Defaults& defaults, const std::vector<Migration>& steps, int target);
inline int migrate(Defaults& defaults)
{
    return migrate(defaults, migrations(), currentSchemaVersion);
}

} // namespace settings
