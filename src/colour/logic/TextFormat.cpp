// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/TextFormat.h"

#include <cstdio>
#include <limits>

namespace colour {

QString formatWhole(double value)
{
    char buffer[64];
    const int n = std::snprintf(buffer, sizeof buffer, "%.0f", value);
    if (n < 0)
        return {};
    if (n >= static_cast<int>(sizeof buffer)) {
        // Only values beyond 1e62 get here; no colour or position does.
        QByteArray big(n + 1, '\0');
        std::snprintf(big.data(), big.size(), "%.0f", value);
        return QString::fromLatin1(big.constData(), n);
    }
    return QString::fromLatin1(buffer, n);
}

std::optional<std::uint32_t> scanHexInt(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    if (i + 1 < text.size() && text.at(i) == u'0' &&
        (text.at(i + 1) == u'x' || text.at(i + 1) == u'X'))
        i += 2;
    const auto digitOf = [](QChar c) -> int {
        const char16_t u = c.unicode();
        if (u >= u'0' && u <= u'9')
            return u - u'0';
        if (u >= u'a' && u <= u'f')
            return u - u'a' + 10;
        if (u >= u'A' && u <= u'F')
            return u - u'A' + 10;
        return -1;
    };
    std::uint64_t value = 0;
    bool overflow = false;
    bool any = false;
    for (; i < text.size(); ++i) {
        const int d = digitOf(text.at(i));
        if (d < 0)
            break;
        any = true;
        if (!overflow) {
            value = value * 16 + static_cast<std::uint64_t>(d);
            overflow = value > std::numeric_limits<std::uint32_t>::max();
        }
    }
    if (!any) {
        // "0x" with no digit after it: the scanner still read the zero.
        if (i >= 2 && text.at(i - 1).toLower() == u'x' && text.at(i - 2) == u'0')
            return 0U;
        return std::nullopt;
    }
    return overflow ? std::numeric_limits<std::uint32_t>::max() : static_cast<std::uint32_t>(value);
}

} // namespace colour
