// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Defaults.h"

namespace settings {

struct KeySpec;

// What the start-up writes depends on the clock and the user's folders;
// tests pass their own.
struct StartContext
{
    double secondsSince1970 = 0;
    QString downloadsFolder;

    [[nodiscard]] static StartContext current();
};

// The preference steps of the start-up, in the order the application runs
// them:
//   1. isFirstRun() is what the hot key set-up asks to decide whether to
//      install the default hot keys; it runs before step 2.
//   2. installFirstRunValues(); when it answers true the caller removes the
//      login item.
//   3. installEveryStartValues().
//   4. shortcutOfButton() fills the live tool short cut table.
//   5. removeRetiredKeys().
//   6. takeRestartRequest(); when it answers true the caller shows and
//      activates the Preferences window.
// markForRestart() is the first step of resetting Kelvo, before the process
// relaunches itself.

// A first run is a start without installTime. Removing it is how a reset
// brings the first-run values back.
[[nodiscard]] bool isFirstRun(const Defaults& defaults);

// installTime's text: whole seconds, rounded, as printf's "%.f" gives them.
[[nodiscard]] QString installTimeText(double secondsSince1970);

// On a first run writes every first-run value of the schema in table order
// (removing the ones whose first value is "absent"), and answers true.
// Otherwise changes nothing and answers false.
bool installFirstRunValues(Defaults& defaults, const StartContext& context);

// The value Kelvo writes for a FirstRun or EveryStart key (invalid for
// keys it never writes).
[[nodiscard]] QVariant initialValue(const KeySpec& spec, const StartContext& context);

// Writes each every-start value whose deciding key is absent, then
// synchronizes. Values already there are never touched.
void installEveryStartValues(Defaults& defaults, const StartContext& context);

// Removes keys that nothing reads any more.
void removeRetiredKeys(Defaults& defaults);

// A restart asked for by a reset: when restart reads true, stores "NO" in it
// and answers true.
[[nodiscard]] bool takeRestartRequest(Defaults& defaults);

// The first step of a reset: when installTime exists, removes it, asks the
// next start to show the Preferences window and synchronizes. Without
// installTime nothing is written (the next start then stays hidden).
// Answers whether a restart was asked for.
bool markForRestart(Defaults& defaults);

// The live tool short cuts: the stored dictionary as it is when it has at
// least one entry (missing tools are not filled in), else the defaults.
[[nodiscard]] QVariantMap shortcutOfButton(const Defaults& defaults);
[[nodiscard]] QVariantMap defaultShortcutOfButton();

} // namespace settings
