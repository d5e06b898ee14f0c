// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/RectString.h"

#include <gtest/gtest.h>

using app::hotkeys::rectFromString;

TEST(RectString, ReadsTheWrittenFormAndIsLenientAboutTheRest)
{
    EXPECT_EQ(rectFromString(QStringLiteral("{{100, 200}, {300, 150}}")),
              QRectF(100, 200, 300, 150));
    EXPECT_EQ(rectFromString(QStringLiteral("{{-12.5, 3e2}, {0.5, .25}}")),
              QRectF(-12.5, 300, 0.5, 0.25));
    EXPECT_EQ(rectFromString(QStringLiteral("1 2 3 4 5")), QRectF(1, 2, 3, 4));
    // Missing numbers are 0.
    EXPECT_EQ(rectFromString(QStringLiteral("{{7, 8}}")), QRectF(7, 8, 0, 0));
    EXPECT_EQ(rectFromString(QString()), QRectF());
    EXPECT_EQ(rectFromString(QStringLiteral("garbage")), QRectF());
}
