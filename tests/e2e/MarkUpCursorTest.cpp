// SPDX-License-Identifier: GPL-3.0-or-later
// The pointer over a capture being marked up: the drawing tool's own
// cursor, in the tool's colour with its size written in it, read back from
// the X server as a screen recorder would see it.
#include "support/CursorImage.h"
#include "support/MarkUpFixture.h"

#include "toolbar/logic/DataOfUsers.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace e2e;

namespace {

const QColor kBlue(20, 90, 230);
const QColor kGreen(0, 160, 60);

// The remembered settings with the rectangle blue at 16 points and the
// line green at 7, as a user would have left them.
QMap<QString, QString> preferences()
{
    QVariantMap data = toolbar::DataOfUsers::defaultData();
    data.insert(QStringLiteral("square"),
                QVariantMap{{QStringLiteral("size"), 16},
                            {QStringLiteral("color"), kBlue.name(QColor::HexArgb)}});
    data.insert(QStringLiteral("line"),
                QVariantMap{{QStringLiteral("size"), 7},
                            {QStringLiteral("color"), kGreen.name(QColor::HexArgb)}});
    QMap<QString, QString> prefs = kPlain;
    prefs.insert(
        QStringLiteral("DataOfUsers"),
        QString::fromUtf8(
            QJsonDocument(QJsonObject::fromVariantMap(data)).toJson(QJsonDocument::Compact)));
    return prefs;
}

bool isWhite(QRgb p)
{
    return qAlpha(p) == 255 && qRed(p) > 230 && qGreen(p) > 230 && qBlue(p) > 230;
}

// The tool cursor at `ratio` pixels per point: its size and hot spot, its
// arms in `color`, and its white digits only in the bottom-right quadrant.
// Says what is wrong, or nothing.
std::string toolCursorFault(const CursorImage& c, QColor color, int ratio)
{
    const int side = 32 * ratio;
    if (c.image.size() != QSize(side, side))
        return "size " + std::to_string(c.image.width()) + "x" + std::to_string(c.image.height());
    if (c.hotSpot != QPoint(16, 16) * ratio)
        return "hot spot " + std::to_string(c.hotSpot.x()) + "," + std::to_string(c.hotSpot.y());
    for (const QPoint arm : {QPoint(6, 16), QPoint(26, 16), QPoint(16, 6), QPoint(16, 26)}) {
        const QColor seen = c.image.pixelColor(arm * ratio);
        if (seen != color)
            return "arm colour " + seen.name().toStdString();
    }
    int digits = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const bool offTheCross =
                std::abs(x - side / 2) > 2 * ratio && std::abs(y - side / 2) > 2 * ratio;
            if (!offTheCross || !isWhite(c.image.pixel(x, y)))
                continue;
            if (x < side / 2 || y < side / 2)
                return "white outside the bottom-right quadrant";
            ++digits;
        }
    }
    return digits >= 3 * ratio ? std::string() : "no digits";
}

// Where the number begins: the leftmost white column in the digits'
// quadrant. A number with more digits begins further left.
int numberStart(const CursorImage& c)
{
    const int half = c.image.width() / 2;
    for (int x = half + 3; x < c.image.width(); ++x)
        for (int y = half + 3; y < c.image.height(); ++y)
            if (isWhite(c.image.pixel(x, y)))
                return x;
    return c.image.width();
}

} // namespace

class MarkUpCursor : public MarkUp
{
protected:
    // The pointer's picture once `accepted` says it is the one wanted.
    CursorImage cursorOnceIt(const std::function<bool(const CursorImage&)>& accepted)
    {
        CursorImage seen;
        const bool reached = waitFor([&] {
            const std::optional<CursorImage> now = currentCursor(x->connection());
            if (now)
                seen = *now;
            return now && accepted(*now);
        });
        EXPECT_TRUE(reached) << "the pointer shows a " << seen.image.width() << "x"
                             << seen.image.height() << " cursor";
        return seen;
    }

    void pointAt(QPoint global)
    {
        x->movePointer(global.x() - 5, global.y() - 5);
        barrier();
        x->movePointer(global.x(), global.y());
        barrier();
    }
};

TEST_F(MarkUpCursor, TheToolsCursorShowsItsColourAndSizeAndFollowsTheToolButNotOverAStroke)
{
    // The second monitor at twice the pixels per point.
    QProcessEnvironment env;
    env.insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"), QStringLiteral("1;2"));
    startKelvoWith(preferences(), env);

    selectRegion();
    chooseTool("1", "square");
    const QPoint free = kRegion.topLeft() + QPoint(150, 100);
    pointAt(free);
    const CursorImage square =
        cursorOnceIt([](const CursorImage& c) { return toolCursorFault(c, kBlue, 1).empty(); });
    EXPECT_EQ(toolCursorFault(square, kBlue, 1), "");

    // "3" takes the line: the cursor is made again, green with its own size,
    // while the pointer stays where it is.
    typeKey("3");
    const CursorImage line =
        cursorOnceIt([](const CursorImage& c) { return toolCursorFault(c, kGreen, 1).empty(); });
    EXPECT_EQ(toolCursorFault(line, kGreen, 1), "");
    EXPECT_NE(line.serial, square.serial);
    EXPECT_GT(numberStart(line), numberStart(square)) << "7 is written as wide as 16";

    // Over a stroke the pointer shows that a press grabs it, and off it the
    // tool's cursor comes back.
    strokeIn(QPoint(200, 200), QPoint(400, 200));
    pointAt(kRegion.topLeft() + QPoint(300, 200));
    const CursorImage overStroke = cursorOnceIt([&](const CursorImage& c) {
        return c.serial != line.serial && !toolCursorFault(c, kGreen, 1).empty();
    });
    EXPECT_NE(toolCursorFault(overStroke, kGreen, 1), "");
    pointAt(free);
    cursorOnceIt([](const CursorImage& c) { return toolCursorFault(c, kGreen, 1).empty(); });

    // The bar has the arrow; back over the picture, the tool's cursor again.
    const QRectF bar = toolbar::placeButtonBox(QRectF(kRegion), QSizeF(1920, 1080));
    pointAt(toolbar::buttonCentre(bar, QStringLiteral("undo")).toPoint());
    cursorOnceIt([](const CursorImage& c) { return !toolCursorFault(c, kGreen, 1).empty(); });
    pointAt(free);
    const CursorImage back =
        cursorOnceIt([](const CursorImage& c) { return toolCursorFault(c, kGreen, 1).empty(); });
    EXPECT_EQ(toolCursorFault(back, kGreen, 1), "") << "the bar's arrow stayed over the picture";
    typeKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); }));

    // On the scaled monitor the same cursor has twice the pixels.
    const QRect scaled(kSecond.x() + 200, 200, 480, 360);
    selectRegion(scaled);
    typeKey("1");
    pointAt(scaled.topLeft() + QPoint(150, 100));
    const CursorImage sharp =
        cursorOnceIt([](const CursorImage& c) { return toolCursorFault(c, kBlue, 2).empty(); });
    EXPECT_EQ(toolCursorFault(sharp, kBlue, 2), "");
    typeKey("Escape");
}
