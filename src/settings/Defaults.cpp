// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Defaults.h"

#include "settings/StringValues.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace settings {

namespace {

bool isNumber(const QVariant& v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

bool isText(const QVariant& v)
{
    return v.typeId() == QMetaType::QString || v.typeId() == QMetaType::QByteArray;
}

// Doubles are truncated towards zero like a C cast, but NaN and values out
// of range must not be undefined behaviour.
qint64 truncated(double d)
{
    if (std::isnan(d))
        return 0;
    if (d >= 9.2233720368547758e18)
        return std::numeric_limits<qint64>::max();
    if (d <= -9.2233720368547758e18)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(d);
}

QJsonDocument jsonOf(const QVariant& v)
{
    if (!isText(v))
        return {};
    return QJsonDocument::fromJson(v.toString().toUtf8());
}

} // namespace

Defaults::Defaults(SettingsStore& store, QObject* parent)
    : QObject(parent)
    , m_store(store)
{}

bool Defaults::contains(const QString& key) const
{
    std::lock_guard lock(m_mutex);
    return m_store.contains(key);
}

QVariant Defaults::objectForKey(const QString& key) const
{
    std::lock_guard lock(m_mutex);
    return m_store.value(key);
}

QString Defaults::stringForKey(const QString& key) const
{
    const QVariant v = objectForKey(key);
    if (isText(v))
        return v.toString();
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    if (isNumber(v))
        return v.toString();
    return {};
}

bool Defaults::boolForKey(const QString& key) const
{
    const QVariant v = objectForKey(key);
    if (v.typeId() == QMetaType::Bool)
        return v.toBool();
    if (isText(v))
        return boolValue(v.toString());
    if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float)
        return v.toDouble() != 0.0; // NaN is non-zero, as in C
    if (isNumber(v))
        return v.toLongLong() != 0 || v.toULongLong() != 0;
    return false;
}

qint64 Defaults::integerForKey(const QString& key) const
{
    const QVariant v = objectForKey(key);
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? 1 : 0;
    if (isText(v))
        return integerValue(v.toString());
    if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float)
        return truncated(v.toDouble());
    if (isNumber(v))
        return v.toLongLong();
    return 0;
}

double Defaults::doubleForKey(const QString& key) const
{
    const QVariant v = objectForKey(key);
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? 1.0 : 0.0;
    if (isText(v))
        return doubleValue(v.toString());
    if (isNumber(v))
        return v.toDouble();
    return 0.0;
}

QVariantMap Defaults::dictionaryForKey(const QString& key) const
{
    const QVariant v = objectForKey(key);
    if (v.typeId() == QMetaType::QVariantMap)
        return v.toMap();
    const QJsonDocument doc = jsonOf(v);
    return doc.isObject() ? doc.object().toVariantMap() : QVariantMap();
}

QVariantList Defaults::arrayForKey(const QString& key) const
{
    const QVariant v = objectForKey(key);
    if (v.typeId() == QMetaType::QVariantList)
        return v.toList();
    const QJsonDocument doc = jsonOf(v);
    return doc.isArray() ? doc.array().toVariantList() : QVariantList();
}

QStringList Defaults::allKeys() const
{
    std::lock_guard lock(m_mutex);
    return m_store.allKeys();
}

void Defaults::setObject(const QString& key, const QVariant& value)
{
    if (!value.isValid()) {
        removeObjectForKey(key);
        return;
    }
    QVariant stored = value;
    if (value.typeId() == QMetaType::QVariantMap)
        stored = QString::fromUtf8(QJsonDocument(QJsonObject::fromVariantMap(value.toMap()))
                                       .toJson(QJsonDocument::Compact));
    else if (value.typeId() == QMetaType::QVariantList || value.typeId() == QMetaType::QStringList)
        stored = QString::fromUtf8(QJsonDocument(QJsonArray::fromVariantList(value.toList()))
                                       .toJson(QJsonDocument::Compact));
    {
        std::lock_guard lock(m_mutex);
        m_store.setValue(key, stored);
    }
    // Outside the lock: observers may read or write preferences themselves.
    Q_EMIT changed(key, stored);
}

void Defaults::setBool(const QString& key, bool value)
{
    setObject(key, QVariant(value));
}

void Defaults::setInteger(const QString& key, qint64 value)
{
    setObject(key, QVariant(value));
}

void Defaults::removeObjectForKey(const QString& key)
{
    {
        std::lock_guard lock(m_mutex);
        m_store.remove(key);
    }
    Q_EMIT changed(key, QVariant());
}

bool Defaults::synchronize()
{
    std::lock_guard lock(m_mutex);
    return m_store.sync();
}

} // namespace settings
