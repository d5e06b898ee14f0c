// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ShortText.h"

namespace core {

QString shortForMessage(const QString& text, qsizetype longest)
{
    const bool cut = text.size() > longest;
    QString shown = text.left(longest);
    for (QChar& c : shown) {
        if (!c.isPrint())
            c = QLatin1Char('?');
    }
    return cut ? shown + QStringLiteral("...") : shown;
}

} // namespace core
