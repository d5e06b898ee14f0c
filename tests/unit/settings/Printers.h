// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <ostream>

// Readable failure messages for the Qt types the preference tests compare.
inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* os)
{
    *os << '[' << list.join(QStringLiteral(", ")).toStdString() << ']';
}

inline void PrintTo(const QVariant& v, std::ostream* os)
{
    *os << v.typeName() << '(' << v.toString().toStdString() << ')';
}
