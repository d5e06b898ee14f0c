// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/logic/ButtonBox.h"

#include "core/Geometry.h"

#include <cmath>

namespace toolbar {

namespace {

using L = QLatin1StringView;

// Below this the selection leaves no room for the bar under it.
constexpr qreal kLowestSelectionY = 93;
constexpr qreal kHalfBar = 262;          // from the selection's middle to the bar's left end
constexpr qreal kBarUnderSelection = 50; // from the selection's bottom to the bar's
constexpr qreal kBarInsideY = 53;        // the bar's y when it goes inside the selection
constexpr qreal kSanjiaoBelowBar = 15;
constexpr qreal kColorBoxBelowBar = 50;
constexpr QPointF kShadow2Offset{7, 13};

// The pointer's x and the box's x, from the bar's origin, for each drawing
// tool in slot order. The pointer's steps are 35 with 3 taken off from the
// line on and 5 from the text on; the box cannot follow the first two, as
// it would stick out of the bar's left end.
constexpr std::array<qreal, 9> kSanjiaoX{10, 45, 77, 112, 147, 182, 215, 250, 285};
constexpr std::array<qreal, 9> kColorBoxX{0, 0, 10, 45, 80, 115, 150, 185, 220};

constexpr std::array<Slot, kSlotCount> kSlots{{
    {L("square"), ToolId::Square, L("boxSquare"), L("popUpButtonSquare")},
    {L("ellipse"), ToolId::Ellipse, L("boxEllipse"), L("popUpButtonEllipse")},
    {L("line"), ToolId::Line, L("boxLine"), L("popUpButtonLine")},
    {L("arrow"), ToolId::Arrow, L("boxArrow"), L("popUpButtonArrow")},
    {L("pencilPen"), ToolId::PencilPen, L("boxPencil"), L("popUpButtonPencil")},
    {L("mosaic"), ToolId::Mosaic, L("boxMosaic"), L("popUpButtonMosaic")},
    {L("text"), ToolId::Text, L("boxText"), L("popUpButtonText")},
    {L("note"), ToolId::Note, L("boxNote"), L("popUpButtonNote")},
    {L("highlight"), ToolId::Highlight, L("boxHighlight"), L("popUpButtonHighlight")},
    {L("undo"), ToolId::Undo, L("boxUndo"), L()},
    {L("map"), ToolId::Map, L("boxMap"), L()},
    {L("cancel"), ToolId::Cancel, L("boxCancel"), L()},
    {L("scrollScreenshot"), ToolId::ScrollScreenshot, L("boxScrollScreenshot"),
     L("popUpButtonScrollScreenshot")},
    {L("save"), ToolId::Save, L("boxSave"), L("popUpButtonSave")},
    {L("copyToPaste"), ToolId::CopyToPaste, L("boxCopyToPaste"), L("popUpButtonCopyToPaste")},
}};

} // namespace

const std::array<Slot, kSlotCount>& slots()
{
    return kSlots;
}

int slotNamed(QStringView name)
{
    for (int i = 0; i < kSlotCount; ++i) {
        if (name == kSlots[static_cast<std::size_t>(i)].name)
            return i;
    }
    return -1;
}

int toolSlot(QStringView tool)
{
    const int slot = slotNamed(tool);
    return slot >= 0 && slot < kUndoSlot ? slot : -1;
}

const QStringList& buttonNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const Slot& slot : kSlots)
            list.append(QString(slot.name));
        return list;
    }();
    return names;
}

QLatin1StringView shortcutKeyOf(int slot)
{
    if (slot < 0 || slot >= kSlotCount ||
        kSlots[static_cast<std::size_t>(slot)].menuButton.isEmpty())
        return {};
    return tool(*kSlots[static_cast<std::size_t>(slot)].tool).shortcutKey;
}

BarPlacement placeBar(const QRectF& selection, qreal screenWidth)
{
    BarPlacement placement;
    qreal x = std::trunc(selection.center().x() - kHalfBar);
    qreal y = kBarInsideY;
    placement.buttonBoxNeedHidden = !(selection.y() > kLowestSelectionY);
    if (!placement.buttonBoxNeedHidden)
        y = std::trunc(selection.y()) - kBarUnderSelection;
    if (x < 0)
        x = 0;
    // On a screen narrower than the bar this leaves x below 0.
    if (x + kButtonBoxWidth > screenWidth)
        x = screenWidth - kButtonBoxWidth;
    placement.buttonBoxOrigin = QPointF(x, y);
    return placement;
}

QRectF placeButtonBox(const QRectF& selection, const QSizeF& screen)
{
    const QRectF frame = core::flipped(
        selection.adjusted(-kSelectionBand, -kSelectionBand, kSelectionBand, kSelectionBand),
        screen.height());
    const BarPlacement placement = placeBar(frame, screen.width());
    return core::flipped(QRectF(placement.buttonBoxOrigin, buttonBoxSize()), screen.height());
}

QPointF buttonCentre(const QRectF& box, const QString& name)
{
    const QRectF button = buttonFrame(std::max(0, slotNamed(name)));
    return {box.left() + button.center().x(), box.bottom() - button.center().y()};
}

QRectF buttonFrame(int slot)
{
    const qreal inset = (kSlotPitch - kButtonSize) / 2;
    return {slot * kSlotPitch + inset, (kButtonBoxHeight - kButtonSize) / 2, kButtonSize,
            kButtonSize};
}

int buttonUnder(QPointF inBox)
{
    for (int i = 0; i < kSlotCount; ++i) {
        if (pointInRect(inBox, buttonFrame(i)))
            return i;
    }
    return -1;
}

int slotUnder(qreal x, qreal boxX)
{
    const auto fx = static_cast<float>(x);
    for (int i = 0; i < kSlotCount; ++i) {
        const auto left = static_cast<float>(boxX + kSlotPitch * i);
        if (fx > left && fx < left + static_cast<float>(kSlotPitch))
            return i;
    }
    return -1;
}

std::optional<ColorBoxPlacement> placeColorBox(QStringView toolName, QPointF buttonBoxOrigin)
{
    const int slot = toolSlot(toolName);
    if (slot < 0)
        return std::nullopt;
    const auto i = static_cast<std::size_t>(slot);
    ColorBoxPlacement placement;
    placement.sanjiao = buttonBoxOrigin + QPointF(kSanjiaoX[i], -kSanjiaoBelowBar);
    placement.colorBox = QRectF(buttonBoxOrigin + QPointF(kColorBoxX[i], -kColorBoxBelowBar),
                                QSizeF(kColorBoxWidth, kColorBoxHeight));
    placement.shadow2 = placement.colorBox.topLeft() - kShadow2Offset;
    return placement;
}

QPointF tipOrigin(int slot, QPointF buttonBoxOrigin, qreal tipWidth, qreal screenWidth,
                  bool scrolling)
{
    // A scrolling capture's bar holds slots 11 to 14 from its left end; its
    // tips are measured from slot 10, which puts them one slot right.
    const int place = scrolling ? slot - 10 : slot;
    qreal x = place * kSlotPitch + buttonBoxOrigin.x() + 17 - tipWidth / 2;
    if (x + tipWidth > screenWidth)
        x = screenWidth - tipWidth;
    if (x < 0)
        x = 0;
    return {x, buttonBoxOrigin.y() + kButtonBoxHeight};
}

std::vector<MenuItem> shortcutMenu(int slot, const QVariantMap& shortcutOfButton)
{
    const QString own = QString(shortcutKeyOf(slot));
    QStringList titles;
    for (char c = '1'; c <= '9'; ++c)
        titles.append(QString(QLatin1Char(c)));
    titles.append(QStringLiteral("0"));
    for (char c = 'A'; c <= 'Z'; ++c)
        titles.append(QString(QLatin1Char(c)));
    titles.append(QString(QChar(kSpaceKeyText)));
    titles.append(QString(QChar(kReturnKeyText)));

    std::vector<MenuItem> items;
    for (const QString& title : titles) {
        MenuItem item{title, true, false};
        for (auto it = shortcutOfButton.constBegin(); it != shortcutOfButton.constEnd(); ++it) {
            if (it.key() == own)
                item.current = !own.isEmpty() && it->toString() == title;
            else if (it->toString() == title)
                item.enabled = false;
        }
        items.push_back(item);
    }
    return items;
}

bool pointInRect(QPointF p, const QRectF& r)
{
    return p.x() >= r.left() && p.x() < r.right() && p.y() >= r.top() && p.y() < r.bottom();
}

} // namespace toolbar
