// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstanceShots.h"

#include "app/output/ShotCommand.h"

#include <QDir>
#include <QFileInfo>
#include <QPointF>

#include <algorithm>

namespace app {

namespace {

// Relative paths in the request are the client's: the command runs in its
// directory and the instance's own is put back afterwards.
class WorkingDirectory
{
public:
    explicit WorkingDirectory(const QString& directory)
        : m_previous(QDir::currentPath())
        , m_entered(QDir::setCurrent(directory))
    {}
    ~WorkingDirectory()
    {
        if (m_entered)
            QDir::setCurrent(m_previous);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    [[nodiscard]] bool entered() const { return m_entered; }

private:
    QString m_previous;
    bool m_entered;
};

std::optional<InstanceShots::Answer> decline(QString* why, const QString& reason)
{
    if (why != nullptr)
        *why = reason;
    return std::nullopt;
}

} // namespace

QStringList InstanceShots::sharedVariables()
{
    return {QStringLiteral("DISPLAY"), QStringLiteral("HOME"), QStringLiteral("XDG_CONFIG_HOME")};
}

InstanceShots::InstanceShots(Services services)
    : m_services(std::move(services))
{}

QString InstanceShots::ownVariable(const QString& name) const
{
    return m_services.environment ? m_services.environment(name)
                                  : qEnvironmentVariable(qPrintable(name));
}

std::optional<InstanceShots::Answer> InstanceShots::take(const QStringList& arguments,
                                                         const QString& directory,
                                                         const QStringList& environment,
                                                         QString* why)
{
    using output::ShotRequest;
    if (arguments.isEmpty())
        return decline(why, QStringLiteral("no verb"));
    const QString verb = arguments.constFirst();
    if (verb != QLatin1String("full") && verb != QLatin1String("screen"))
        return decline(why, QStringLiteral("not a picture of the screen"));

    // Another display or other preferences: the client's own run differs.
    for (const QString& name : sharedVariables()) {
        const QString prefix = name + QLatin1Char('=');
        const auto it = std::find_if(environment.cbegin(), environment.cend(),
                                     [&](const QString& e) { return e.startsWith(prefix); });
        if (it == environment.cend() || it->mid(prefix.size()) != ownVariable(name))
            return decline(why, QStringLiteral("%1 differs").arg(name));
    }
    if (m_services.desktopHeld && m_services.desktopHeld())
        return decline(why, QStringLiteral("a capture holds the desktop"));
    if (!QFileInfo(directory).isAbsolute())
        return decline(why, QStringLiteral("no working directory"));

    const WorkingDirectory inClientDirectory(directory);
    if (!inClientDirectory.entered())
        return decline(why, QStringLiteral("cannot enter the working directory"));
    // Mistakes are told by the client's own run, in its own words.
    const auto request = ShotRequest::parse(
        verb == QLatin1String("full") ? ShotRequest::Area::Desktop : ShotRequest::Area::Screen,
        arguments.mid(1), nullptr);
    if (!request)
        return decline(why, QStringLiteral("options the command itself must answer"));
    if (!request->isImmediate())
        return decline(why, QStringLiteral("a delay or a copy"));

    Answer answer;
    output::ShotCommand::Services services;
    static_cast<output::ShotSources&>(services) = m_services;
    services.writeOut = [&answer](const QByteArray& bytes) { answer.out += bytes; };
    services.report = [&answer](const QString& line) {
        answer.errors += QStringLiteral("kelvo: ") + line + QLatin1Char('\n');
    };
    answer.exitCode = output::ShotCommand(std::move(services)).run(*request);
    return answer;
}

} // namespace app
