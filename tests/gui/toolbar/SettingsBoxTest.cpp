// SPDX-License-Identifier: GPL-3.0-or-later
// The settings box under each tool as it looks, and clicked as a user
// clicks it: dots and swatches changing the tool and the active stroke,
// the own colour's notice and panel, and the panel outliving no capture.
#include "toolbar/logic/SettingsBox.h"
#include "AnnotationBench.h"
#include "platform/null/NullServices.h"
#include "settings/Keys.h"
#include "support/GoldenImage.h"
#include "toolbar/ui/SettingsBoxView.h"
#include "toolbar/ui/ToolBarView.h"

#include <QApplication>
#include <QColorDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace toolbar;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor kSwatch3 = QColor::fromString("#ff47a8d4");

// A press and release of `button` at `p` (the box's own points).
void click(QWidget* box, QPointF p, Qt::MouseButton button = Qt::LeftButton)
{
    const QPointF global = box->mapToGlobal(p);
    QMouseEvent press(QEvent::MouseButtonPress, p, global, button, button, Qt::NoModifier);
    QApplication::sendEvent(box, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, p, global, button, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(box, &release);
}

struct SettingsBench : Bench
{
    platform::null::RecordingNotifier notices;

    SettingsBench()
    {
        controller.setNotifier(&notices);
        open();
    }
    SettingsBoxView* box() const { return controller.toolBarView()->colorBox(); }
    void choose(const char* tool)
    {
        controller.toolBar()->button(QString::fromLatin1(tool))->click();
    }
    void swatch(int n, Qt::MouseButton button = Qt::LeftButton)
    {
        click(box(), swatchFrame(n).center(), button);
    }
    // The newest snapshot's colour, as the history keeps it.
    QColor newestColor() const { return controller.strokes().arrayOfStrokes().back().color; }
    QColorDialog* dialog() const
    {
        QWidget* panel = controller.colorPanel().window();
        return panel != nullptr ? panel->findChild<QColorDialog*>() : nullptr;
    }
};

} // namespace

TEST(SettingsBox, aSwatchOrDotRecoloursTheActiveStrokeAsAnUndoStepAndTheToolAfterIt)
{
    SettingsBench b;
    b.choose("square");
    b.stroke(QPointF(400, 400), QPointF(500, 500));
    ASSERT_EQ(b.controller.strokes().arrayOfStrokes().size(), 1U);

    b.swatch(3);
    EXPECT_EQ(b.controller.dataOfUsers().color(QStringLiteral("square")), kSwatch3);
    ASSERT_EQ(b.controller.strokes().arrayOfStrokes().size(), 2U);
    EXPECT_EQ(b.newestColor(), kSwatch3);
    // A click on the swatch it has already appends nothing.
    b.swatch(3);
    EXPECT_EQ(b.controller.strokes().arrayOfStrokes().size(), 2U);

    // The largest dot: 16 for the rectangle, stored and in the stroke.
    click(b.box(), dotArea(2).center());
    EXPECT_EQ(b.controller.dataOfUsers().size(QStringLiteral("square")), 16);
    EXPECT_EQ(b.controller.strokes().arrayOfStrokes().back().size, 16);
    EXPECT_EQ(b.controller.strokes().arrayOfStrokes().size(), 3U);

    // Undo takes the size back, then the colour.
    b.controller.undo();
    b.controller.undo();
    const std::vector<annotation::Stroke> shown = b.controller.strokes().currentStrokes(false);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown.front().color, QColor(Qt::red));
    EXPECT_EQ(shown.front().size, 3);

    // Without an active stroke only the tool changes.
    b.swatch(5);
    EXPECT_EQ(b.controller.strokes().arrayOfStrokes().size(), 3U);
    EXPECT_EQ(b.controller.dataOfUsers().color(QStringLiteral("square")),
              QColor::fromString("#ff47a14f"));

    // The mosaic's dots stand for other numbers; the text tools' size menu
    // stores its title as text.
    b.choose("mosaic");
    click(b.box(), dotArea(1).center());
    EXPECT_EQ(b.controller.dataOfUsers().size(QStringLiteral("mosaic")), 6);
    b.choose("text");
    ASSERT_TRUE(b.box()->popupSize()->isVisibleTo(b.box()));
    const QList<QAction*> sizes = b.box()->popupSize()->menu()->actions();
    ASSERT_EQ(sizes.size(), 11);
    sizes.at(7)->trigger();
    EXPECT_EQ(b.controller.dataOfUsers().tool(QStringLiteral("text")).value(QStringLiteral("size")),
              QVariant(QStringLiteral("36")));
    EXPECT_EQ(b.box()->popupSize()->text(), QStringLiteral("36"));
    // The third dot of a text tool is its colour, no size.
    click(b.box(), dotArea(2).center());
    EXPECT_EQ(b.controller.dataOfUsers().size(QStringLiteral("text")), 36);
}

TEST(SettingsBox, aShapeOptionTurnsThePreferenceAndTheActiveStrokeAsAnUndoStep)
{
    SettingsBench b;
    b.choose("square");
    b.stroke(QPointF(400, 400), QPointF(500, 500));
    // Round corners, then fill: each a preference and a step of the stroke.
    click(b.box(), optionFrame(0).center());
    EXPECT_TRUE(b.defaults.boolForKey(settings::keys::enableRoundOfSquare));
    click(b.box(), optionFrame(1).center());
    EXPECT_TRUE(b.defaults.boolForKey(settings::keys::filledOfSquare));
    ASSERT_EQ(b.controller.strokes().arrayOfStrokes().size(), 3U);
    EXPECT_TRUE(b.controller.strokes().arrayOfStrokes().back().filledOfSquare);
    EXPECT_TRUE(b.controller.strokes().arrayOfStrokes().back().enableRoundOfSquare);
    b.controller.undo();
    EXPECT_FALSE(b.controller.strokes().currentStrokes(false).front().filledOfSquare);
    // The box shows the fill pressed; a second click turns it off.
    const QImage pressed = b.box()->grab().toImage();
    click(b.box(), optionFrame(1).center());
    EXPECT_FALSE(b.defaults.boolForKey(settings::keys::filledOfSquare));
    EXPECT_NE(b.box()->grab().toImage(), pressed);

    // The arrow's one option is its kind; the line has none.
    b.choose("arrow");
    const bool stroked = b.defaults.boolForKey(settings::keys::normalTypeOfArrow);
    click(b.box(), optionFrame(0).center());
    EXPECT_NE(b.defaults.boolForKey(settings::keys::normalTypeOfArrow), stroked);
    b.choose("line");
    EXPECT_EQ(optionUnder(u"line", optionFrame(0).center()), -1);
}

TEST(SettingsBox, theOwnColourIsAskedForThenChosenInThePanelAndSavedAtOnce)
{
    SettingsBench b;
    b.choose("arrow");
    b.stroke(QPointF(400, 400), QPointF(500, 500));

    // None saved: a notice says how, and nothing else changes.
    b.swatch(6);
    ASSERT_EQ(b.notices.sent.size(), 1U);
    EXPECT_EQ(b.notices.sent[0].title, QStringLiteral("This color needs to be customized"));
    EXPECT_EQ(b.notices.sent[0].body, QStringLiteral("RightMouse click, please"));
    EXPECT_TRUE(b.notices.sent[0].withSound);
    EXPECT_EQ(b.controller.strokes().arrayOfStrokes().size(), 1U);
    EXPECT_EQ(b.controller.dataOfUsers().color(QStringLiteral("arrow")), QColor(Qt::red));

    // A right click opens the panel beside the box; each change is taken.
    b.swatch(6, Qt::RightButton);
    ASSERT_TRUE(b.controller.colorPanel().isOpen());
    ASSERT_NE(b.dialog(), nullptr);
    EXPECT_TRUE(b.dialog()->testOption(QColorDialog::ShowAlphaChannel));
    const QColor chosen(10, 200, 30, 128);
    b.dialog()->setCurrentColor(chosen);
    // The dialog may tell a colour and then its alpha: a step each.
    EXPECT_EQ(b.newestColor(), chosen);
    EXPECT_GE(b.controller.strokes().arrayOfStrokes().size(), 2U);
    const QVariantMap saved =
        b.defaults.dictionaryForKey(QStringLiteral("DataOfUsers")).value(u"arrow"_s).toMap();
    EXPECT_EQ(saved.value(QStringLiteral("userColor")), QVariant(QStringLiteral("#800ac81e")));
    EXPECT_EQ(saved.value(QStringLiteral("color")), QVariant(QStringLiteral("#800ac81e")));

    // Closing it keeps the colour; swatch 6 now gives it to another tool
    // only once that tool has its own.
    b.dialog()->reject();
    EXPECT_FALSE(b.controller.colorPanel().isOpen());
    b.swatch(1);
    b.swatch(6);
    EXPECT_EQ(b.newestColor(), chosen);
    EXPECT_EQ(b.notices.sent.size(), 1U);
    b.choose("line");
    b.swatch(6);
    EXPECT_EQ(b.notices.sent.size(), 2U);
}

TEST(SettingsBox, thePanelGoesWithTheCaptureInEitherOrder)
{
    SettingsBench b;
    b.choose("square");
    b.swatch(6, Qt::RightButton);
    ASSERT_TRUE(b.controller.colorPanel().isOpen());
    // The capture ends first: the panel goes, and a late change of it is
    // nobody's.
    b.controller.closeWindow();
    EXPECT_FALSE(b.controller.colorPanel().isOpen());
    ASSERT_NE(b.dialog(), nullptr);
    b.dialog()->setCurrentColor(Qt::blue);
    EXPECT_EQ(b.controller.dataOfUsers().color(QStringLiteral("square")), QColor(Qt::red));

    // The panel closed first, then the capture.
    b.open();
    b.choose("square");
    b.swatch(6, Qt::RightButton);
    ASSERT_TRUE(b.controller.colorPanel().isOpen());
    b.dialog()->reject();
    b.controller.closeWindow();
    EXPECT_FALSE(b.controller.colorPanel().isOpen());
}

namespace {

struct BoxCase
{
    const char* tool;
    int size;
    bool ownColour;
};

const BoxCase kBoxCases[] = {
    {"square", 3, false}, {"square", 10, true},     {"ellipse", 16, false}, {"line", 16, false},
    {"arrow", 12, false}, {"pencilPen", 16, true},  {"mosaic", 6, false},   {"text", 18, false},
    {"note", 24, true},   {"highlight", 40, false},
};

void PrintTo(const BoxCase& c, std::ostream* os)
{
    *os << c.tool << " at " << c.size << (c.ownColour ? " with an own colour" : "");
}

class ColorBoxGolden : public ::testing::TestWithParam<BoxCase>
{};

} // namespace

INSTANTIATE_TEST_SUITE_P(Tools, ColorBoxGolden, ::testing::ValuesIn(kBoxCases), [](const auto& c) {
    return std::string(c.param.tool) + (c.param.ownColour ? "Own" : "");
});

TEST_P(ColorBoxGolden, LooksAsRecorded)
{
    const BoxCase& c = GetParam();
    SettingsBoxView view;
    BoxSettings settings;
    settings.color = kSwatch3;
    settings.size = c.size;
    settings.sizeTitle = QString::number(c.size);
    if (c.ownColour)
        settings.userColor = QColor(120, 40, 200);
    // The first shape option on, to be seen pressed beside one that is off.
    settings.options.assign(shapeOptions(QString::fromLatin1(c.tool)).size(), false);
    if (!settings.options.empty())
        settings.options.front() = true;
    view.showTool(QString::fromLatin1(c.tool), settings);
    const QImage picture = view.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const QString name =
        QStringLiteral("colorbox-%1%2").arg(QLatin1String(c.tool), c.ownColour ? u"-own" : u"");
    const golden::Result result = golden::compare(picture, name, golden::kScreenshot);
    EXPECT_TRUE(result.matches) << result.message.toStdString();
}
