// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/StringValues.h"

#include <QString>

#include <limits>

namespace settings {

namespace {

qsizetype skipSpace(QStringView text, qsizetype i)
{
    while (i < text.size() && text[i].isSpace())
        ++i;
    return i;
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

template <typename Int>
Int leadingInteger(QStringView text)
{
    qsizetype i = skipSpace(text, 0);
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    // Accumulate towards the sign's side so that the minimum of the type is
    // reachable, and stop at the limit instead of overflowing.
    Int value = 0;
    constexpr Int max = std::numeric_limits<Int>::max();
    constexpr Int min = std::numeric_limits<Int>::min();
    for (; i < text.size() && isDigit(text[i]); ++i) {
        const Int digit = static_cast<Int>(text[i].unicode() - u'0');
        if (negative) {
            if (value < (min + digit) / 10)
                return min;
            value = value * 10 - digit;
        } else {
            if (value > (max - digit) / 10)
                return max;
            value = value * 10 + digit;
        }
    }
    return value;
}

} // namespace

int intValue(QStringView text)
{
    return leadingInteger<int>(text);
}

qint64 integerValue(QStringView text)
{
    return leadingInteger<qint64>(text);
}

double doubleValue(QStringView text)
{
    const qsizetype start = skipSpace(text, 0);
    qsizetype i = start;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    qsizetype digits = 0;
    for (; i < text.size() && isDigit(text[i]); ++i)
        ++digits;
    if (i < text.size() && text[i] == u'.') {
        ++i;
        for (; i < text.size() && isDigit(text[i]); ++i)
            ++digits;
    }
    if (digits == 0)
        return 0.0;
    // An exponent counts only when digits follow it: "2e" is 2.
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype j = i + 1;
        if (j < text.size() && (text[j] == u'+' || text[j] == u'-'))
            ++j;
        if (j < text.size() && isDigit(text[j])) {
            while (j < text.size() && isDigit(text[j]))
                ++j;
            i = j;
        }
    }
    bool ok = false;
    const double value = text.mid(start, i - start).toString().toDouble(&ok);
    return ok ? value : 0.0;
}

bool boolValue(QStringView text)
{
    qsizetype i = skipSpace(text, 0);
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    while (i < text.size() && text[i] == u'0')
        ++i;
    if (i >= text.size())
        return false;
    const QChar c = text[i];
    return c == u'Y' || c == u'y' || c == u'T' || c == u't' || (c >= u'1' && c <= u'9');
}

} // namespace settings
