// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"
#include "settings/StringValues.h"

#include "Printers.h"

#include <gtest/gtest.h>

#include <limits>

using settings::Defaults;
using settings::MemoryStore;

namespace {

struct SettingsStored : ::testing::Test
{
    MemoryStore store;
    Defaults defaults{store};

    void put(const QVariant& v) { store.setValue(QStringLiteral("k"), v); }
};

} // namespace

TEST(SettingsStringValues, IntValueTakesTheLeadingDecimalInteger)
{
    using settings::intValue;
    EXPECT_EQ(intValue(u"18"), 18);
    EXPECT_EQ(intValue(u"  \t42"), 42);
    EXPECT_EQ(intValue(u"-7"), -7);
    EXPECT_EQ(intValue(u"+7"), 7);
    EXPECT_EQ(intValue(u"3.5"), 3);
    EXPECT_EQ(intValue(u"12px"), 12);
    EXPECT_EQ(intValue(u"0x1F"), 0);
    EXPECT_EQ(intValue(u"x1"), 0);
    EXPECT_EQ(intValue(u"YES"), 0);
    EXPECT_EQ(intValue(u""), 0);
    EXPECT_EQ(intValue(u"-"), 0);
    EXPECT_EQ(intValue(u"- 5"), 0);
}

TEST(SettingsStringValues, IntegersStickAtTheLimitsOfTheirType)
{
    EXPECT_EQ(settings::intValue(u"2147483647"), std::numeric_limits<int>::max());
    EXPECT_EQ(settings::intValue(u"2147483648"), std::numeric_limits<int>::max());
    EXPECT_EQ(settings::intValue(u"-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(settings::intValue(u"-99999999999999"), std::numeric_limits<int>::min());
    EXPECT_EQ(settings::integerValue(u"2147483648"), Q_INT64_C(2147483648));
    EXPECT_EQ(settings::integerValue(u"99999999999999999999999"),
              std::numeric_limits<qint64>::max());
    EXPECT_EQ(settings::integerValue(u"-9223372036854775808"), std::numeric_limits<qint64>::min());
}

TEST(SettingsStringValues, DoubleValueTakesTheLongestNumericPrefix)
{
    using settings::doubleValue;
    EXPECT_DOUBLE_EQ(doubleValue(u"0.5"), 0.5);
    EXPECT_DOUBLE_EQ(doubleValue(u" .25s"), 0.25);
    EXPECT_DOUBLE_EQ(doubleValue(u"-1.5e2x"), -150.0);
    EXPECT_DOUBLE_EQ(doubleValue(u"2e"), 2.0);
    EXPECT_DOUBLE_EQ(doubleValue(u"3."), 3.0);
    EXPECT_DOUBLE_EQ(doubleValue(u"."), 0.0);
    EXPECT_DOUBLE_EQ(doubleValue(u"abc"), 0.0);
}

TEST(SettingsStringValues, BoolValueLooksAtTheFirstSignificantCharacter)
{
    using settings::boolValue;
    for (const char16_t* yes : {u"YES", u"yes", u"Y", u"true", u"T", u"1", u"9", u"007", u"-5",
                                u"  YES", u"+0001", u"tralala"})
        EXPECT_TRUE(boolValue(yes)) << QString::fromUtf16(yes).toStdString();
    for (const char16_t* no : {u"NO", u"no", u"false", u"0", u"000", u"", u"   ", u"0.5", u"nope",
                               u"-", u"x1", u"ja", u"\u00dd"})
        EXPECT_FALSE(boolValue(no)) << QString::fromUtf16(no).toStdString();
}

TEST_F(SettingsStored, BoolForKeyReadsEveryStoredForm)
{
    const std::pair<QVariant, bool> cases[] = {
        {QVariant(true), true},
        {QVariant(false), false},
        {QVariant(QStringLiteral("YES")), true},
        {QVariant(QStringLiteral("NO")), false},
        {QVariant(QStringLiteral("true")), true}, // a bool after an INI round trip
        {QVariant(QStringLiteral("false")), false},
        {QVariant(2), true},
        {QVariant(0), false},
        {QVariant(-1), true},
        {QVariant(0.25), true},
        {QVariant(0.0), false},
        {QVariant(QByteArray("1")), true},
        {QVariant(QVariantMap{{QStringLiteral("a"), 1}}), false},
        {QVariant(QVariantList{1}), false},
    };
    for (const auto& [stored, expected] : cases) {
        put(stored);
        EXPECT_EQ(defaults.boolForKey(QStringLiteral("k")), expected)
            << stored.toString().toStdString() << " of type " << stored.typeName();
    }
    EXPECT_FALSE(defaults.boolForKey(QStringLiteral("missing")));
}

TEST_F(SettingsStored, IntegerForKeyReadsNumbersAndNumericText)
{
    const std::pair<QVariant, qint64> cases[] = {
        {QVariant(QStringLiteral("18")), 18},
        {QVariant(QStringLiteral(" 3.9")), 3},
        {QVariant(QStringLiteral("garbage")), 0},
        {QVariant(QStringLiteral("YES")), 0},
        {QVariant(12), 12},
        {QVariant(-3.9), -3},
        {QVariant(true), 1},
        {QVariant(1e300), std::numeric_limits<qint64>::max()},
        {QVariant(qQNaN()), 0},
        {QVariant(QVariantMap{{QStringLiteral("a"), 1}}), 0},
    };
    for (const auto& [stored, expected] : cases) {
        put(stored);
        EXPECT_EQ(defaults.integerForKey(QStringLiteral("k")), expected)
            << stored.toString().toStdString();
    }
    EXPECT_EQ(defaults.integerForKey(QStringLiteral("missing")), 0);
}

TEST_F(SettingsStored, StringForKeyGivesTextOfScalarsOnly)
{
    put(QStringLiteral("ㄩ"));
    EXPECT_EQ(defaults.stringForKey(QStringLiteral("k")), QStringLiteral("ㄩ"));
    put(1);
    EXPECT_EQ(defaults.stringForKey(QStringLiteral("k")), QStringLiteral("1"));
    put(true);
    EXPECT_EQ(defaults.stringForKey(QStringLiteral("k")), QStringLiteral("1"));
    put(0.5);
    EXPECT_EQ(defaults.stringForKey(QStringLiteral("k")), QStringLiteral("0.5"));
    put(QVariantMap{{QStringLiteral("a"), 1}});
    EXPECT_TRUE(defaults.stringForKey(QStringLiteral("k")).isNull());
    EXPECT_TRUE(defaults.stringForKey(QStringLiteral("missing")).isNull());
    // An empty string is present, unlike a missing key.
    put(QString(""));
    EXPECT_FALSE(defaults.stringForKey(QStringLiteral("k")).isNull());
}

TEST_F(SettingsStored, DictionariesAreStoredAsJsonTextAndReadBack)
{
    const QVariantMap dict{{QStringLiteral("saveShortcut"), QStringLiteral("ㄩ")},
                           {QStringLiteral("n"), 3}};
    defaults.setObject(QStringLiteral("k"), dict);
    EXPECT_EQ(store.value(QStringLiteral("k")).typeId(), QMetaType::QString);
    const QVariantMap back = defaults.dictionaryForKey(QStringLiteral("k"));
    EXPECT_EQ(back.value(QStringLiteral("saveShortcut")).toString(), QStringLiteral("ㄩ"));
    EXPECT_EQ(back.value(QStringLiteral("n")).toInt(), 3);

    defaults.setObject(QStringLiteral("list"), QVariantList{1, QStringLiteral("two")});
    EXPECT_EQ(defaults.arrayForKey(QStringLiteral("list")),
              (QVariantList{1.0, QStringLiteral("two")}));
}

TEST_F(SettingsStored, NonDictionaryValuesReadAsEmptyDictionaries)
{
    for (const QVariant& v :
         {QVariant(QStringLiteral("{not json")), QVariant(QStringLiteral("[1,2]")),
          QVariant(QStringLiteral("YES")), QVariant(5), QVariant()}) {
        if (v.isValid())
            put(v);
        else
            store.remove(QStringLiteral("k"));
        EXPECT_TRUE(defaults.dictionaryForKey(QStringLiteral("k")).isEmpty());
    }
    put(QStringLiteral("{\"a\":1}"));
    EXPECT_TRUE(defaults.arrayForKey(QStringLiteral("k")).isEmpty());
}

TEST_F(SettingsStored, StoringNothingRemovesTheKeyAndEveryWriteIsAnnounced)
{
    QStringList announced;
    QObject::connect(&defaults, &Defaults::changed, [&](const QString& key, const QVariant& value) {
        announced << key + QLatin1Char('=') + value.toString();
        // An observer may read the new value at once.
        EXPECT_EQ(defaults.objectForKey(key), value);
    });
    defaults.setObject(QStringLiteral("k"), QStringLiteral("YES"));
    defaults.setObject(QStringLiteral("k"), QVariant());
    EXPECT_FALSE(defaults.contains(QStringLiteral("k")));
    defaults.setBool(QStringLiteral("b"), true);
    defaults.removeObjectForKey(QStringLiteral("b"));
    EXPECT_EQ(announced, (QStringList{"k=YES", "k=", "b=true", "b="}));
}
