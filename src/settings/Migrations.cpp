// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Migrations.h"

#include "settings/Keys.h"

#include <algorithm>

namespace settings {

const std::vector<Migration>& migrations()
{
    static const std::vector<Migration> steps;
    return steps;
}

int migrate(Defaults& defaults, const std::vector<Migration>& steps, int target)
{
    const int version = static_cast<int>(defaults.integerForKey(keys::schemaVersion));
    if (version >= target)
        return version;
    std::vector<const Migration*> pending;
    for (const Migration& step : steps)
        if (step.toVersion > version && step.toVersion <= target && step.apply)
            pending.push_back(&step);
    std::stable_sort(pending.begin(), pending.end(), [](const Migration* a, const Migration* b) {
        return a->toVersion < b->toVersion;
    });
    for (const Migration* step : pending)
        step->apply(defaults);
    defaults.setInteger(keys::schemaVersion, target);
    defaults.synchronize();
    return target;
}

} // namespace settings
