// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Defaults.h"
#include "settings/Startup.h"

#include <QString>

#include <optional>
#include <vector>

namespace settings {

// The preferences file is edited by hand, copied between machines and
// sometimes damaged. Every reader copes with any value (an unreadable
// number reads as 0), but 0 is not always harmless: a shadow of -3 or
// 99999 points, a delay of -5 seconds, a switch that reads "5". So at each
// start the values Kelvo itself reads are checked against what their
// readers can use, and a bad one is put back to its first value.

// What a key's value must be, in words for the warning; nullopt when the
// value is good (or the key is absent, or nothing checks it).
[[nodiscard]] std::optional<QString> problemWithValue(const QString& key, const QVariant& value);

struct Repair
{
    QString key;
    QString badValue;    // as it was stored, shortened for a message
    QString wanted;      // what the value must be
    QString replacement; // the value put back; empty when the key was removed

    // One line for stderr naming the key, the bad value and the default.
    [[nodiscard]] QString message() const;
};

// Puts every checked key whose value is bad back to its first value (from
// `context`, as a first run would write it), or removes it when it has
// none, so its readers use their built-in value. Answers what it changed.
std::vector<Repair> repairBadValues(Defaults& defaults, const StartContext& context);

} // namespace settings
