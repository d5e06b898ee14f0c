// SPDX-License-Identifier: GPL-3.0-or-later
// The settings box's changes: the number each dot stores per tool, what
// the box shows, and a change of colour or size reaching the active stroke
// as an undo step, also when it comes after an undo.
#include "toolbar/logic/SettingsAdjust.h"
#include "annotation/logic/StrokeState.h"
#include "toolbar/logic/DataOfUsers.h"

#include <gtest/gtest.h>

using namespace toolbar;
using namespace Qt::Literals::StringLiterals;
namespace st = annotation::stroketype;

namespace {

const QColor kRed = QColor::fromString("#ffff0000");
const QColor kBlue = QColor::fromString("#ff47a8d4"); // swatch 3 as the box stores it

// A red stroke of `type`, numbered as a new one, committed and left active.
annotation::Stroke draw(annotation::StrokeState& state, int type, double x)
{
    annotation::Stroke s;
    s.type = type;
    s.list = state.getListNumberFromArrayOfStrokes(type) + 1;
    s.color = kRed;
    s.size = 3;
    s.X1 = x;
    s.Y1 = 10;
    s.X2 = x + 20;
    s.Y2 = 30;
    state.dicOfCurrentStroke = s;
    state.commit();
    return s;
}

// The visible strokes by identity and colour, newest first.
std::vector<std::pair<QString, QString>> visible(const annotation::StrokeState& state)
{
    std::vector<std::pair<QString, QString>> out;
    for (const annotation::Stroke& s : state.currentStrokes(false))
        out.emplace_back(s.identity(), colorText(s.color));
    return out;
}

using Seen = std::vector<std::pair<QString, QString>>;

} // namespace

TEST(SettingsAdjust, eachDotStoresItsToolsNumberAndTheTextToolsThirdDotNone)
{
    const auto dots = [](const char* tool) {
        const QString name = QString::fromLatin1(tool);
        return std::vector<std::optional<int>>{sizeOfDotClick(name, 0), sizeOfDotClick(name, 1),
                                               sizeOfDotClick(name, 2)};
    };
    using D = std::vector<std::optional<int>>;
    for (const char* plain : {"square", "ellipse", "line", "arrow", "pencilPen"})
        EXPECT_EQ(dots(plain), (D{3, 10, 16})) << plain;
    EXPECT_EQ(dots("mosaic"), (D{3, 6, 10}));
    EXPECT_EQ(dots("highlight"), (D{10, 20, 30}));
    // The text tools hide the first two; the third is their colour sample.
    EXPECT_EQ(dots("text"), (D{3, 10, std::nullopt}));
    EXPECT_EQ(dots("note"), (D{3, 10, std::nullopt}));
    EXPECT_EQ(sizeOfDotClick(u"square", 3), std::nullopt);
    EXPECT_EQ(sizeOfDotClick(u"square", -1), std::nullopt);

    EXPECT_EQ(textSizeTitles().size(), 11);
    EXPECT_EQ(textSizeTitles().first(), QStringLiteral("10"));
    EXPECT_EQ(textSizeTitles().at(5), QStringLiteral("18"));
    EXPECT_EQ(textSizeTitles().last(), QStringLiteral("72"));
}

TEST(SettingsAdjust, theBoxShowsTheActiveStrokesSettingsElseTheToolsAndOnlyASavedUserColour)
{
    DataOfUsers data;
    data.setValue(QStringLiteral("arrow"), QStringLiteral("size"), 10);
    data.setValue(QStringLiteral("arrow"), QStringLiteral("color"), colorText(kBlue));
    BoxSettings shown = settingsToShow(data, QStringLiteral("arrow"), std::nullopt, QColor());
    EXPECT_EQ(shown.color, kBlue);
    EXPECT_EQ(shown.size, 10);
    EXPECT_FALSE(shown.userColor.isValid());
    EXPECT_TRUE(shown.sizeTitle.isEmpty());

    annotation::Stroke active;
    active.type = st::Arrow;
    active.color = kRed;
    active.size = 16.7; // read as a whole number
    shown = settingsToShow(data, QStringLiteral("arrow"), active, Qt::green);
    EXPECT_EQ(shown.color, kRed);
    EXPECT_EQ(shown.size, 16);
    EXPECT_EQ(shown.userColor, QColor(Qt::green));

    // The text tools' menu takes the text's font size, else the size.
    data.setValue(QStringLiteral("note"), QStringLiteral("size"), QStringLiteral("24"));
    EXPECT_EQ(settingsToShow(data, QStringLiteral("note"), std::nullopt, {}).sizeTitle, u"24");
    EXPECT_EQ(settingsToShow(data, QStringLiteral("note"), std::nullopt, {}, 36).sizeTitle, u"36");

    // The user colour is the tool's own, from the saved dictionary.
    const QVariantMap saved{
        {QStringLiteral("line"),
         QVariantMap{{QStringLiteral("userColor"), QStringLiteral("#8000ff00")}}},
        {QStringLiteral("text"),
         QVariantMap{{QStringLiteral("userColor"), QStringLiteral("not a colour")}}}};
    EXPECT_EQ(storedUserColor(saved, QStringLiteral("line")), QColor(0, 255, 0, 128));
    EXPECT_FALSE(storedUserColor(saved, QStringLiteral("square")).isValid());
    EXPECT_FALSE(storedUserColor(saved, QStringLiteral("text")).isValid());
    EXPECT_EQ(colorText(QColor(0, 255, 0, 128)), QStringLiteral("#8000ff00"));
}

TEST(SettingsAdjust, aChangeReachesOnlyAnActiveStrokeAsAnUndoStep)
{
    annotation::StrokeState strokes;
    draw(strokes, st::Square, 10);
    // The same settings: nothing to append.
    EXPECT_EQ(applyToActiveStroke(strokes, kRed, 3), std::nullopt);
    EXPECT_EQ(strokes.arrayOfStrokes().size(), 1U);

    EXPECT_EQ(applyToActiveStroke(strokes, kBlue, 3), st::Square);
    ASSERT_EQ(strokes.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(strokes.arrayOfStrokes().back().color, kBlue);
    EXPECT_EQ(strokes.dicOfCurrentStroke->color, kBlue);
    EXPECT_EQ(visible(strokes), (Seen{{u"01"_s, u"#ff47a8d4"_s}}));
    // A size alone is a change too.
    EXPECT_EQ(applyToActiveStroke(strokes, kBlue, 16), st::Square);
    EXPECT_EQ(strokes.arrayOfStrokes().back().size, 16);
    EXPECT_EQ(strokes.arrayOfStrokes().size(), 3U);

    // Undo uncovers the colour before, redo brings the change back.
    strokes.undoDraw();
    strokes.undoDraw();
    EXPECT_EQ(visible(strokes), (Seen{{u"01"_s, u"#ffff0000"_s}}));
    EXPECT_TRUE(strokes.redoDraw());
    EXPECT_EQ(visible(strokes), (Seen{{u"01"_s, u"#ff47a8d4"_s}}));

    // Without an active stroke (an undo ends it) nothing changes.
    EXPECT_EQ(applyToActiveStroke(strokes, kRed, 3), std::nullopt);
    EXPECT_EQ(strokes.arrayOfStrokes().size(), 3U);
    EXPECT_EQ(refreshAfterChange(st::Square), StrokeRefresh::ImageView);
    EXPECT_EQ(refreshAfterChange(st::Mosaic), StrokeRefresh::Mosaic);
    EXPECT_EQ(refreshAfterChange(st::Highlight), StrokeRefresh::HighlightAndMosaic);
}

TEST(SettingsAdjust, aChangeAfterAnUndoKeepsTheUndoneTailAndHidesItselfUntilARedo)
{
    annotation::StrokeState strokes;
    const annotation::Stroke first = draw(strokes, st::Square, 10);
    draw(strokes, st::Ellipse, 50);
    strokes.undoDraw(); // the ellipse goes
    EXPECT_EQ(visible(strokes), (Seen{{u"01"_s, u"#ffff0000"_s}}));

    // The rectangle grabbed again and recoloured: appended behind the
    // undone ellipse with the undo count unchanged, the change shows the
    // ellipse and hides itself.
    strokes.dicOfCurrentStroke = first;
    EXPECT_EQ(applyToActiveStroke(strokes, kBlue, 3), st::Square);
    EXPECT_EQ(strokes.arrayOfStrokes().size(), 3U);
    EXPECT_EQ(strokes.undoTimes(), 1);
    EXPECT_EQ(visible(strokes), (Seen{{u"11"_s, u"#ffff0000"_s}, {u"01"_s, u"#ffff0000"_s}}));
    EXPECT_TRUE(strokes.redoDraw());
    EXPECT_EQ(visible(strokes), (Seen{{u"01"_s, u"#ff47a8d4"_s}, {u"11"_s, u"#ffff0000"_s}}));
}
