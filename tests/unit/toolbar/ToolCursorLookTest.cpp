// SPDX-License-Identifier: GPL-3.0-or-later
// The colour and number the tool's own cursor shows for each kind of tool.
#include "toolbar/logic/ToolCursor.h"

#include <gtest/gtest.h>

namespace toolbar {
namespace {

const QColor kBlue(20, 90, 230);
const QColor kGreen(0, 160, 60);

TEST(ToolCursorLook, PlainToolsShowTheActiveStrokeElseTheToolsOwnSettings)
{
    EXPECT_EQ(toolCursorLook(u"square", std::nullopt, kBlue, 16), (ToolCursorLook{kBlue, 16}));
    EXPECT_EQ(toolCursorLook(u"line", ActiveStrokeLook{kGreen, 5}, kBlue, 16),
              (ToolCursorLook{kGreen, 5}));
    // A stroke without a size of its own shows the tool's; its size is cut
    // to a whole number as the box writes it.
    EXPECT_EQ(toolCursorLook(u"arrow", ActiveStrokeLook{kGreen, 0}, kBlue, 10),
              (ToolCursorLook{kGreen, 10}));
    EXPECT_EQ(toolCursorLook(u"pencilPen", ActiveStrokeLook{kGreen, 7.9}, kBlue, 10).number, 7);
    // No readable colour anywhere: red, the colour a new stroke gets.
    EXPECT_EQ(toolCursorLook(u"ellipse", ActiveStrokeLook{QColor(), 3}, QColor(), 3).color,
              QColor(Qt::red));
    EXPECT_EQ(toolCursorLook(u"ellipse", ActiveStrokeLook{QColor(), 3}, kBlue, 3).color, kBlue);
}

TEST(ToolCursorLook, HighlightShowsItsPerCentAndTheTextToolsTheirMenusSize)
{
    EXPECT_EQ(toolCursorLook(u"highlight", std::nullopt, kBlue, 40).number, 100);
    EXPECT_EQ(toolCursorLook(u"highlight", std::nullopt, kBlue, 10).number, 25);
    EXPECT_EQ(toolCursorLook(u"highlight", ActiveStrokeLook{kGreen, 20}, kBlue, 40).number, 50);
    EXPECT_EQ(toolCursorLook(u"text", std::nullopt, kBlue, 18).number, 18);
    EXPECT_EQ(toolCursorLook(u"note", ActiveStrokeLook{kGreen, 24}, kBlue, 18).number, 24);
}

} // namespace
} // namespace toolbar
