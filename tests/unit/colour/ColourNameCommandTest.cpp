// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/logic/ColourNameCommand.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

struct CommandRun
{
    int code = -1;
    QString out;
    QString err;
};

CommandRun run(const QStringList& args)
{
    CommandRun r;
    QTextStream out(&r.out);
    QTextStream err(&r.err);
    r.code = colour::runColourNameCommand(args, out, err);
    return r;
}

} // namespace

TEST(ColourNameCommand, PrintsTheLookUpAsOneJsonObject)
{
    const CommandRun r = run({QStringLiteral("FF0000")});
    EXPECT_EQ(r.code, 0);
    EXPECT_TRUE(r.err.isEmpty());
    EXPECT_EQ(r.out, QStringLiteral("{\"rgb\":\"255,0,0\",\"hex\":\"#FF0000\",\"colorName\":"
                                    "\"Red\",\"colorValue\":\"85\"}\n"));

    const CommandRun hash = run({QStringLiteral("#0000ac")});
    EXPECT_EQ(hash.code, 0);
    const QJsonObject o = QJsonDocument::fromJson(hash.out.toUtf8()).object();
    EXPECT_EQ(o.value(QStringLiteral("hex")).toString(), QStringLiteral("#0000AC"));
    EXPECT_EQ(o.value(QStringLiteral("rgb")).toString(), QStringLiteral("0,0,172"));
    EXPECT_EQ(o.value(QStringLiteral("colorName")).toString(), QStringLiteral("Dark Blue"));
    EXPECT_EQ(o.value(QStringLiteral("colorValue")).toString(), QStringLiteral("57"));
    EXPECT_EQ(o.size(), 4);
}

TEST(ColourNameCommand, RefusesAnythingButOneSixDigitColour)
{
    const QList<QStringList> bad{
        {},
        {QStringLiteral("FF0000"), QStringLiteral("00FF00")},
        {QStringLiteral("FF00")},
        {QStringLiteral("FF00000")},
        {QStringLiteral("GG0000")},
        {QStringLiteral("#")},
        {QStringLiteral("##FF0000")},
        {QStringLiteral(" FF0000")},
        {QStringLiteral("0xFF00")},
    };
    for (const QStringList& args : bad) {
        const CommandRun r = run(args);
        EXPECT_EQ(r.code, 1) << qPrintable(args.join(u' '));
        EXPECT_TRUE(r.out.isEmpty());
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("kelvo colour-name: "))) << qPrintable(r.err);
    }
    EXPECT_TRUE(run({QStringLiteral("GG0000")}).err.contains(QStringLiteral("'GG0000'")));
}
