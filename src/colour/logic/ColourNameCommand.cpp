// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColourNameCommand.h"

#include "colour/logic/ColorNamer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <cstdio>

namespace colour {

namespace {

// A JSON string literal, escaped by Qt's own writer.
QString jsonString(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

} // namespace

int runColourNameCommand(const QStringList& arguments)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runColourNameCommand(arguments, out, err);
}

int runColourNameCommand(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() != 1) {
        err << "kelvo colour-name: expected one colour as RRGGBB or #RRGGBB, got "
            << arguments.size() << " arguments\n";
        err.flush();
        return 1;
    }
    QString digits = arguments.first();
    if (digits.startsWith(u'#'))
        digits.remove(0, 1);
    static const QRegularExpression sixHexDigits(QStringLiteral("^[0-9A-Fa-f]{6}$"));
    if (!sixHexDigits.match(digits).hasMatch()) {
        err << "kelvo colour-name: '" << arguments.first()
            << "' is not a colour; expected six hexadecimal digits, as RRGGBB or #RRGGBB\n";
        err.flush();
        return 1;
    }

    const ColorInfo info = ColorNamer().findNameForColorHexString(digits);
    out << "{\"rgb\":" << jsonString(info.rgb) << ",\"hex\":" << jsonString(info.hex)
        << ",\"colorName\":" << jsonString(info.colorName)
        << ",\"colorValue\":" << jsonString(info.colorValue) << "}\n";
    out.flush();
    return 0;
}

} // namespace colour
