// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColorCopyKeys.h"

#include <QStringList>

namespace colour {

ColorKeyOutcome colorKeyOutcome(int key, Qt::KeyboardModifiers modifiers,
                                const std::optional<QString>& rgbOfColor,
                                const std::optional<QString>& hexOfColor,
                                const std::optional<QString>& customizeColorString)
{
    const Qt::KeyboardModifiers held =
        modifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    switch (key) {
    case Qt::Key_R:
        return {ColorKeyAction::CopyText, rgbOfColor};
    case Qt::Key_H:
        return {ColorKeyAction::CopyText, hexOfColor};
    case Qt::Key_Z:
        if (held == Qt::NoModifier && customizeColorString && rgbOfColor)
            return {ColorKeyAction::CopyText,
                    customColorString(*customizeColorString, *rgbOfColor)};
        if (held == Qt::ShiftModifier || !customizeColorString)
            return {ColorKeyAction::OpenFormatDialog, std::nullopt};
        return {};
    default:
        return {};
    }
}

QString customColorString(const QString& customizeColorString, const QString& rgbOfColor)
{
    const QStringList parts = rgbOfColor.split(u',');
    const auto field = [&parts](qsizetype i) { return i < parts.size() ? parts.at(i) : QString(); };
    QString result = customizeColorString;
    result.replace(QStringLiteral("_R"), field(0));
    result.replace(QStringLiteral("_G"), field(1));
    result.replace(QStringLiteral("_B"), field(2));
    return result;
}

QString formatDialogMessage()
{
    return QString(63, u' ') +
           QStringLiteral("Custom RGB Color Format\n\n\n *_R,_G,_B is the corresponding value of "
                          "RGB,Kelvo will automatically replace it\n\n");
}

QString formatDialogTemplate()
{
    return QStringLiteral(
        "[NSColor colorWithRed:_R/255.0 green:_G/255.0 blue:_B/255.0 alpha:1.0];");
}

std::optional<QString> formatToStore(int dialogResult, const QString& text)
{
    if (dialogResult != kFormatDialogAccepted)
        return std::nullopt;
    if (!text.contains(QStringLiteral("_R")) || !text.contains(QStringLiteral("_G")) ||
        !text.contains(QStringLiteral("_B")))
        return std::nullopt;
    return text;
}

} // namespace colour
