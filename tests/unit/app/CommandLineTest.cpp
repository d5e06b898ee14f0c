// SPDX-License-Identifier: GPL-3.0-or-later
// The verbs that reach the running instance without a capture: a plain
// start and `prefs`.
#include "app/CommandLine.h"

#include <gtest/gtest.h>

using app::CommandLine;

TEST(PrefsVerb, PlainStartAndPrefsAreTheirOwnVerbs)
{
    EXPECT_EQ(CommandLine::parse({}).verb, CommandLine::Verb::Tray);
    const CommandLine prefs = CommandLine::parse({QStringLiteral("prefs")});
    EXPECT_EQ(prefs.verb, CommandLine::Verb::Prefs);
    EXPECT_TRUE(prefs.documents.isEmpty());
    EXPECT_TRUE(CommandLine::usage().contains(QLatin1String("  prefs ")));
}
