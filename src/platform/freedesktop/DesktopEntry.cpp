// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>

namespace platform::freedesktop {

namespace {
constexpr qint64 kMaxDesktopFile = 1 << 20; // far beyond any real entry

// A value of type string with its escapes (\s \n \t \r \\) undone.
QString unescaped(const QByteArray& value)
{
    QByteArray out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const char c = value.at(i);
        if (c != '\\' || i + 1 == value.size()) {
            out += c;
            continue;
        }
        switch (const char next = value.at(++i)) {
        case 's':
            out += ' ';
            break;
        case 'n':
            out += '\n';
            break;
        case 't':
            out += '\t';
            break;
        case 'r':
            out += '\r';
            break;
        case '\\':
            out += '\\';
            break;
        default:
            // No escape of the format: kept as it stands, so that an Exec
            // written with a single backslash before a quote still splits.
            out += '\\';
            out += next;
            break;
        }
    }
    return QString::fromUtf8(out);
}

QByteArray escaped(const QString& value)
{
    QByteArray out;
    for (const char c : value.toUtf8()) {
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
            break;
        }
    }
    return out;
}

QString quotedArgument(const QString& argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    QString arg = argument;
    arg.replace(QLatin1Char('%'), QLatin1String("%%"));
    const bool needsQuotes = arg.isEmpty() || std::any_of(arg.cbegin(), arg.cend(), [](QChar c) {
                                 return reserved.contains(c);
                             });
    if (!needsQuotes)
        return arg;
    QString quoted = QStringLiteral("\"");
    for (const QChar c : arg) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') ||
            c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    return quoted + QLatin1Char('"');
}
} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(const QByteArray& text)
{
    DesktopEntry entry;
    bool inGroup = false;
    bool sawGroup = false;
    for (const QByteArray& raw : text.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (line.startsWith('[')) {
            inGroup = line == "[Desktop Entry]";
            sawGroup = sawGroup || inGroup;
            continue;
        }
        if (!inGroup)
            continue;
        const int eq = line.indexOf('=');
        if (eq <= 0)
            continue;
        const QByteArray key = line.left(eq).trimmed();
        const QString value = unescaped(line.mid(eq + 1).trimmed());
        if (key == "Name")
            entry.name = value;
        else if (key == "Exec")
            entry.exec = value;
        else if (key == "Icon")
            entry.icon = value;
        else if (key == "Type")
            entry.type = value;
        else if (key == "MimeType")
            entry.mimeTypes = value.split(QLatin1Char(';'), Qt::SkipEmptyParts);
        else if (key == "NoDisplay")
            entry.noDisplay = value == QLatin1String("true");
        else if (key == "Hidden")
            entry.hidden = value == QLatin1String("true");
    }
    if (!sawGroup)
        return std::nullopt;
    return entry;
}

std::optional<DesktopEntry> DesktopEntry::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxDesktopFile)
        return std::nullopt;
    return parse(file.read(kMaxDesktopFile));
}

std::vector<Application> imageApplications(const QStringList& folders)
{
    static const QStringList pictureTypes{QStringLiteral("image/png"), QStringLiteral("image/jpeg"),
                                          QStringLiteral("image/tiff")};
    std::vector<Application> apps;
    QSet<QString> seen;
    for (const QString& folder : folders) {
        const QStringList files =
            QDir(folder).entryList({QStringLiteral("*.desktop")}, QDir::Files, QDir::Name);
        for (const QString& file : files) {
            if (seen.contains(file))
                continue;
            seen.insert(file);
            const auto entry = DesktopEntry::load(QDir(folder).filePath(file));
            if (!entry || entry->hidden || entry->noDisplay || entry->name.isEmpty() ||
                entry->type != QLatin1String("Application") || entry->executableName().isEmpty())
                continue;
            const bool opensPictures =
                std::any_of(pictureTypes.cbegin(), pictureTypes.cend(),
                            [&](const QString& t) { return entry->mimeTypes.contains(t); });
            if (opensPictures)
                apps.push_back({file, entry->name, entry->executableName()});
        }
    }
    std::sort(apps.begin(), apps.end(), [](const Application& a, const Application& b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
    return apps;
}

QStringList applicationFolders()
{
    return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

QByteArray execValue(const QStringList& arguments)
{
    QStringList words;
    for (const QString& a : arguments)
        words << quotedArgument(a);
    return escaped(words.join(QLatin1Char(' ')));
}

std::optional<QStringList> splitExec(const QString& exec)
{
    QStringList words;
    QString word;
    bool inWord = false;
    bool quoted = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar c = exec.at(i);
        if (quoted) {
            if (c == QLatin1Char('\\') && i + 1 < exec.size()) {
                word += exec.at(++i);
            } else if (c == QLatin1Char('"')) {
                quoted = false;
            } else {
                word += c;
            }
        } else if (c == QLatin1Char('"')) {
            quoted = true;
            inWord = true;
        } else if (c.isSpace()) {
            if (inWord)
                words << word;
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quoted)
        return std::nullopt;
    if (inWord)
        words << word;
    return words;
}

QStringList DesktopEntry::commandFor(const QString& file) const
{
    const auto words = splitExec(exec);
    if (!words || words->isEmpty())
        return {};
    QStringList command;
    bool placed = false;
    for (const QString& w : *words) {
        if (w == QLatin1String("%f") || w == QLatin1String("%F")) {
            command << file;
            placed = true;
        } else if (w == QLatin1String("%u") || w == QLatin1String("%U")) {
            command << QUrl::fromLocalFile(file).toString();
            placed = true;
        } else if (w.size() == 2 && w.startsWith(QLatin1Char('%'))) {
            continue; // %i, %c, %k and the deprecated codes
        } else {
            QString arg = w;
            arg.replace(QLatin1String("%%"), QLatin1String("%"));
            command << arg;
        }
    }
    if (!placed)
        command << file;
    return command;
}

QString DesktopEntry::executableName() const
{
    const auto words = splitExec(exec);
    if (!words || words->isEmpty())
        return {};
    return QFileInfo(words->constFirst()).fileName();
}

} // namespace platform::freedesktop
