// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/hotkeys/RectString.h"

#include <QRegularExpression>

#include <array>

namespace app::hotkeys {

QRectF rectFromString(const QString& text)
{
    static const QRegularExpression number(
        QStringLiteral(R"([-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?)"));
    std::array<double, 4> values{};
    auto it = number.globalMatch(text);
    for (std::size_t i = 0; i < values.size() && it.hasNext(); ++i)
        values[i] = it.next().captured().toDouble();
    return {values[0], values[1], values[2], values[3]};
}

} // namespace app::hotkeys
