// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ValueChecks.h"

#include "core/ShortText.h"
#include "settings/Schema.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <functional>

namespace settings {

namespace {

using namespace keys;

struct Rule
{
    std::function<bool(const QVariant&)> accepts;
    QString wanted;
};

bool isText(const QVariant& v)
{
    return v.typeId() == QMetaType::QString || v.typeId() == QMetaType::QByteArray;
}

bool isOneOf(const QVariant& v, const QStringList& words)
{
    return isText(v) && words.contains(v.toString().trimmed(), Qt::CaseInsensitive);
}

// A whole number as a number or as its plain text: "12px" and "1.5" are
// not, though intValue would read them, since someone meant something else.
Rule wholeNumber(qint64 min, qint64 max)
{
    return {[min, max](const QVariant& v) {
                bool ok = false;
                qint64 n = 0;
                if (isText(v))
                    n = v.toString().trimmed().toLongLong(&ok);
                else if (v.typeId() != QMetaType::Bool && v.canConvert<qint64>() &&
                         v.toDouble() == double(v.toLongLong()))
                    n = v.toLongLong(&ok);
                return ok && n >= min && n <= max;
            },
            QStringLiteral("a whole number from %1 to %2").arg(min).arg(max)};
}

Rule decimal(double min, double max)
{
    return {[min, max](const QVariant& v) {
                bool ok = false;
                double d = 0;
                if (isText(v))
                    d = v.toString().trimmed().toDouble(&ok);
                else if (v.typeId() != QMetaType::Bool)
                    d = v.toDouble(&ok);
                return ok && d >= min && d <= max;
            },
            QStringLiteral("a number from %1 to %2").arg(min).arg(max)};
}

Rule words(const QStringList& accepted, const QString& wanted)
{
    return {[accepted](const QVariant& v) { return isOneOf(v, accepted); }, wanted};
}

// Switches Kelvo writes as the strings "YES" and "NO".
Rule yesNo()
{
    return words({QStringLiteral("YES"), QStringLiteral("NO")}, QStringLiteral("YES or NO"));
}

// Switches written as booleans, which the INI file keeps as "true"/"false".
Rule boolean()
{
    return {[](const QVariant& v) {
                return v.typeId() == QMetaType::Bool ||
                       isOneOf(v, {QStringLiteral("true"), QStringLiteral("false"),
                                   QStringLiteral("YES"), QStringLiteral("NO"), QStringLiteral("1"),
                                   QStringLiteral("0")});
            },
            QStringLiteral("true or false")};
}

Rule colour()
{
    return {[](const QVariant& v) {
                static const QRegularExpression hex(
                    QStringLiteral("^#([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$"));
                return isText(v) && hex.match(v.toString().trimmed()).hasMatch();
            },
            QStringLiteral("a colour as #AARRGGBB")};
}

Rule jsonObject()
{
    return {[](const QVariant& v) {
                return v.typeId() == QMetaType::QVariantMap ||
                       (isText(v) && QJsonDocument::fromJson(v.toString().toUtf8()).isObject());
            },
            QStringLiteral("a JSON object")};
}

bool isYesNoSwitch(const KeySpec& spec)
{
    const QString first = spec.value.toString();
    return spec.type == ValueType::String &&
           (first == QLatin1String("YES") || first == QLatin1String("NO"));
}

// The checks, from what each reader does with the value. Keys whose value
// nothing reads yet (the recording's) are left alone.
std::optional<Rule> ruleFor(const KeySpec& spec)
{
    // The shadow is drawn around the picture on every side: beyond 100
    // points it is no decoration, and huge sizes exhaust memory.
    if (spec.key == sizeOfShadow)
        return wholeNumber(0, 100);
    // The seconds the Preferences window offers for a delayed capture.
    if (spec.key == timeOfDelayScreenshots)
        return wholeNumber(1, 20);
    // Seconds before the tool bar shows.
    if (spec.key == delayTimeOfPopupToolbar)
        return decimal(0, 10);
    if (spec.key == formatOfSavePhoto)
        return words({QStringLiteral("jpg"), QStringLiteral("png"), QStringLiteral("tiff")},
                     QStringLiteral("jpg, png or tiff"));
    if (spec.key == pathofSaveScreenShotsPhoto)
        return Rule{
            [](const QVariant& v) { return isText(v) && !v.toString().trimmed().isEmpty(); },
            QStringLiteral("a folder or \"Not Specified\"")};
    if (spec.key == restart || isYesNoSwitch(spec))
        return yesNo();
    switch (spec.type) {
    case ValueType::Boolean:
        return boolean();
    case ValueType::Integer:
        // Counts of shown reminders and tips, indexes, the layout version.
        return wholeNumber(0, 1000000);
    case ValueType::Colour:
        return colour();
    case ValueType::Dictionary:
        return jsonObject();
    case ValueType::String:
    case ValueType::Number:
    case ValueType::Any:
        break;
    }
    return std::nullopt;
}

QString shown(const QVariant& v)
{
    return core::shortForMessage(
        v.typeId() == QMetaType::QByteArray ? QString::fromUtf8(v.toByteArray()) : v.toString());
}

} // namespace

std::optional<QString> problemWithValue(const QString& key, const QVariant& value)
{
    const KeySpec* spec = findKey(key);
    if (spec == nullptr || !value.isValid())
        return std::nullopt;
    const auto rule = ruleFor(*spec);
    if (!rule || rule->accepts(value))
        return std::nullopt;
    return rule->wanted;
}

QString Repair::message() const
{
    const QString head =
        QStringLiteral("preference %1 is \"%2\", not %3; ").arg(key, badValue, wanted);
    if (replacement.isEmpty())
        return head + QStringLiteral("removed it, so the built-in value is used");
    return head + QStringLiteral("using the default \"%1\"").arg(replacement);
}

std::vector<Repair> repairBadValues(Defaults& defaults, const StartContext& context)
{
    std::vector<Repair> repairs;
    for (const KeySpec& spec : schema()) {
        const QVariant value = defaults.objectForKey(spec.key);
        const auto wanted = problemWithValue(spec.key, value);
        if (!wanted)
            continue;
        const QVariant first = initialValue(spec, context);
        defaults.setObject(spec.key, first); // an invalid one removes the key
        repairs.push_back(
            {spec.key, shown(value), *wanted, first.isValid() ? shown(first) : QString()});
    }
    if (!repairs.empty())
        defaults.synchronize();
    return repairs;
}

} // namespace settings
