// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Startup.h"

#include "settings/Schema.h"

#include <QDateTime>
#include <QStandardPaths>

#include <cstdio>

namespace settings {

QVariant initialValue(const KeySpec& spec, const StartContext& context)
{
    switch (spec.source) {
    case Source::SecondsSince1970:
        return installTimeText(context.secondsSince1970);
    case Source::DownloadsFolder:
        return context.downloadsFolder;
    case Source::Literal:
        break;
    }
    return spec.value;
}

StartContext StartContext::current()
{
    StartContext context;
    context.secondsSince1970 = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
    context.downloadsFolder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    return context;
}

bool isFirstRun(const Defaults& defaults)
{
    return !defaults.contains(keys::installTime);
}

QString installTimeText(double secondsSince1970)
{
    // The C library's printf, not QString::asprintf: they round halves
    // differently, and the C rounding is the one installed files have.
    char text[64];
    std::snprintf(text, sizeof text, "%.f", secondsSince1970);
    return QString::fromLatin1(text);
}

bool installFirstRunValues(Defaults& defaults, const StartContext& context)
{
    if (!isFirstRun(defaults))
        return false;
    for (const KeySpec& spec : schema()) {
        if (spec.initial == Initial::FirstRun)
            defaults.setObject(spec.key, initialValue(spec, context));
        else if (spec.initial == Initial::FirstRunRemove)
            defaults.removeObjectForKey(spec.key);
    }
    return true;
}

void installEveryStartValues(Defaults& defaults, const StartContext& context)
{
    // Absence is judged before writing anything, so that a key deciding for
    // others is not found present because it was written a moment ago.
    std::vector<const KeySpec*> missing;
    for (const KeySpec& spec : schema()) {
        if (spec.initial != Initial::EveryStart)
            continue;
        const QLatin1StringView decider = spec.decidedBy.isEmpty() ? spec.key : spec.decidedBy;
        if (!defaults.contains(decider))
            missing.push_back(&spec);
    }
    for (const KeySpec* spec : missing)
        defaults.setObject(spec->key, initialValue(*spec, context));
    defaults.synchronize();
}

void removeRetiredKeys(Defaults& defaults)
{
    defaults.removeObjectForKey(keys::mapWindowCloseed);
}

bool takeRestartRequest(Defaults& defaults)
{
    if (!defaults.boolForKey(keys::restart))
        return false;
    defaults.setObject(keys::restart, QStringLiteral("NO"));
    return true;
}

bool markForRestart(Defaults& defaults)
{
    if (!defaults.contains(keys::installTime))
        return false;
    defaults.removeObjectForKey(keys::installTime);
    defaults.setObject(keys::restart, QStringLiteral("YES"));
    defaults.synchronize();
    return true;
}

QVariantMap defaultShortcutOfButton()
{
    QVariantMap map;
    for (const ToolShortcut& s : toolShortcuts())
        map.insert(s.key, s.value);
    return map;
}

QVariantMap shortcutOfButton(const Defaults& defaults)
{
    QVariantMap stored = defaults.dictionaryForKey(keys::shortcutOfButton);
    return stored.isEmpty() ? defaultShortcutOfButton() : stored;
}

} // namespace settings
