// SPDX-License-Identifier: GPL-3.0-or-later
// Runs many region captures in a row against one tray instance of Kelvo and
// reports what it holds on the way: resident memory, open descriptors and X
// server resources. A tray process lives for weeks; whatever one capture
// forgets to give back shows up here, a thousand times over.
//
//   soak_driver KELVO [COUNT]
//
// Needs DISPLAY, a session bus and a private XDG_CONFIG_HOME (bench/soak/run
// sets them up). Exits non-zero only when the captures cannot be run; a
// missed target is printed, not failed, as with every benchmark.
#include "XDriver.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Generous: a loaded machine may stall for seconds, and a stall is not what
// this measures.
constexpr auto kTimeout = 20s;
constexpr double kMemoryTargetMb = 2.0;

const QString kService = QStringLiteral("org.kelvo.Kelvo");

struct Sample
{
    int captures = 0;
    long rssKb = 0;
    int fds = 0;
    soak::XHoldings x;
};

long rssKbOf(pid_t pid)
{
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmRSS:", 0) == 0)
            return std::strtol(line.c_str() + 6, nullptr, 10);
    return -1;
}

int fdsOf(pid_t pid)
{
    std::error_code error;
    std::filesystem::directory_iterator it("/proc/" + std::to_string(pid) + "/fd", error);
    if (error)
        return -1;
    return static_cast<int>(std::distance(it, std::filesystem::directory_iterator()));
}

bool onBus()
{
    auto* bus = QDBusConnection::sessionBus().interface();
    return bus != nullptr && bus->isServiceRegistered(kService).value();
}

// A method of the running instance; empty on success, else the error.
QString call(const QString& method)
{
    const QDBusMessage message = QDBusMessage::createMethodCall(
        kService, QStringLiteral("/org/kelvo/Kelvo"), QStringLiteral("org.kelvo.Kelvo"), method);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message, QDBus::Block, 20000);
    if (reply.type() == QDBusMessage::ErrorMessage)
        return reply.errorName() + QStringLiteral(": ") + reply.errorMessage();
    return {};
}

// The tray instance, started and stopped by us, its stderr kept in a file.
class Kelvo
{
public:
    Kelvo(std::string binary, std::string log)
        : m_binary(std::move(binary))
        , m_log(std::move(log))
    {}
    ~Kelvo() { stop(); }
    Kelvo(const Kelvo&) = delete;
    Kelvo& operator=(const Kelvo&) = delete;

    bool start()
    {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 2, m_log.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                         0644);
        char* argv[] = {m_binary.data(), nullptr};
        const int error = posix_spawn(&m_pid, m_binary.c_str(), &actions, nullptr, argv, environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) {
            m_pid = 0;
            return false;
        }
        return true;
    }

    // Alive and not a zombie.
    bool running()
    {
        if (m_pid == 0)
            return false;
        int status = 0;
        if (waitpid(m_pid, &status, WNOHANG) == m_pid) {
            m_exit = status;
            m_pid = 0;
            return false;
        }
        return true;
    }

    void stop()
    {
        if (!running())
            return;
        kill(m_pid, SIGTERM);
        for (int i = 0; i < 100 && running(); ++i)
            usleep(50000);
        if (running()) {
            kill(m_pid, SIGKILL);
            waitpid(m_pid, nullptr, 0);
        }
        m_pid = 0;
    }

    [[nodiscard]] pid_t pid() const { return m_pid; }
    [[nodiscard]] std::string howItEnded() const
    {
        if (WIFSIGNALED(m_exit))
            return "killed by signal " + std::to_string(WTERMSIG(m_exit));
        return "exited with " + std::to_string(WEXITSTATUS(m_exit));
    }
    [[nodiscard]] std::string logTail() const
    {
        QFile file(QString::fromStdString(m_log));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QByteArray all = file.readAll();
        return all.right(2000).toStdString();
    }

private:
    std::string m_binary;
    std::string m_log;
    pid_t m_pid = 0;
    int m_exit = 0;
};

enum class Ending
{
    Copy,
    Save,
    Cancel
};

const char* nameOf(Ending e)
{
    switch (e) {
    case Ending::Copy:
        return "copy";
    case Ending::Save:
        return "save";
    case Ending::Cancel:
        return "cancel";
    }
    return "?";
}

class Soak
{
public:
    Soak(soak::XDriver& x, Kelvo& kelvo, QString shots)
        : m_x(x)
        , m_kelvo(kelvo)
        , m_shots(std::move(shots))
    {}

    // One capture, number n (from 1); false, with the reason in error(),
    // when it could not be done.
    bool capture(int n)
    {
        // Endings go copy, save, cancel and regions repeat every nine, so
        // captures 10, 100 and 1000 leave Kelvo in the same state.
        const auto ending = static_cast<Ending>((n - 1) % 3);
        const soak::Rect region = regionFor((n - 1) % 9);
        m_what = std::string(nameOf(ending)) + " of " + std::to_string(region.w) + "x" +
                 std::to_string(region.h) + "+" + std::to_string(region.x) + "+" +
                 std::to_string(region.y);

        if (ending == Ending::Copy && !m_x.takeClipboard())
            return fail("could not take the clipboard before the copy");
        m_x.movePointer(region.x - 30, region.y - 30);
        if (const QString error = call(QStringLiteral("ScreenShotsByTessikGroup"));
            !error.isEmpty())
            return fail("the trigger failed: " + error.toStdString());
        if (!m_x.waitFor([&] { return overlaysUp(); }, kTimeout))
            return fail("the overlays did not come up with the keyboard grabbed");

        if (!drag(region))
            return false;
        m_x.tapKey(ending == Ending::Copy   ? XK_Return
                   : ending == Ending::Save ? XK_space
                                            : XK_Escape);
        if (!m_x.waitFor([&] { return m_x.overlaysOf(m_kelvo.pid()).empty(); }, kTimeout))
            return fail("the overlays stayed up after the key");
        if (ending == Ending::Save) {
            std::optional<std::pair<int, int>> size;
            if (!m_x.waitFor([&] { return (size = takeSavedPicture()).has_value(); }, kTimeout))
                return fail("no picture appeared in the save folder");
            // The dragged region, with room for a shadow at most.
            const auto [w, h] = *size;
            if (w < region.w || h < region.h || w > region.w + 100 || h > region.h + 100)
                return fail("the saved picture is " + std::to_string(w) + "x" + std::to_string(h));
        } else if (ending == Ending::Copy) {
            if (!m_x.waitFor([&] { return m_x.clipboardOwnerPid() == m_kelvo.pid(); }, kTimeout))
                return fail("Kelvo did not take the clipboard");
        }
        if (!barrier())
            return false;
        ++m_done[static_cast<int>(ending)];
        return true;
    }

    // Captures seen through to their end: copied, saved, cancelled.
    [[nodiscard]] std::array<int, 3> done() const { return m_done; }

    // Waits until Kelvo's main thread has handled what came before.
    bool barrier()
    {
        m_x.sync();
        if (const QString error = call(QStringLiteral("Version")); !error.isEmpty())
            return fail("Kelvo did not answer: " + error.toStdString());
        return true;
    }

    [[nodiscard]] const std::string& error() const { return m_error; }

private:
    bool fail(const std::string& why)
    {
        m_error = why + " (" + m_what + ")";
        if (!m_kelvo.running())
            m_error += "; Kelvo " + m_kelvo.howItEnded();
        return false;
    }

    soak::Rect regionFor(int k) const
    {
        // Sizes and places vary, on every monitor in turn.
        const auto& monitors = m_x.monitors();
        const soak::Rect& m = monitors[static_cast<std::size_t>(k) % monitors.size()];
        return {m.x + 100 + 40 * k, m.y + 80 + 30 * k, std::min(300 + 50 * k, m.w - 200 - 40 * k),
                std::min(200 + 30 * k, m.h - 300 - 30 * k)};
    }

    bool overlaysUp()
    {
        return m_x.overlaysOf(m_kelvo.pid()) == m_x.monitors() && m_x.keyboardGrabbedByOther();
    }

    bool drag(const soak::Rect& region)
    {
        constexpr int kSteps = 8;
        m_x.movePointer(region.x, region.y);
        if (!barrier())
            return false;
        m_x.pressButton(1);
        for (int i = 1; i <= kSteps; ++i) {
            m_x.movePointer(region.x + region.w * i / kSteps, region.y + region.h * i / kSteps);
            // Qt merges pointer motion: each step must be seen on its own.
            if (!barrier())
                return false;
        }
        m_x.releaseButton(1);
        return barrier();
    }

    // A finished picture (the writer renames it into place) is taken away,
    // so a long run does not fill the disk. Answers the size in its PNG
    // header; {0, 0} when it is not a PNG or more than one appeared.
    std::optional<std::pair<int, int>> takeSavedPicture()
    {
        QDir dir(m_shots);
        const QStringList done = dir.entryList({QStringLiteral("Kelvo*.png")}, QDir::Files);
        if (done.isEmpty())
            return std::nullopt;
        std::pair<int, int> size{0, 0};
        QFile file(dir.filePath(done.front()));
        if (done.size() == 1 && file.open(QIODevice::ReadOnly)) {
            const QByteArray head = file.read(24);
            auto be32 = [&head](int at) {
                return (static_cast<unsigned char>(head[at]) << 24) |
                       (static_cast<unsigned char>(head[at + 1]) << 16) |
                       (static_cast<unsigned char>(head[at + 2]) << 8) |
                       static_cast<unsigned char>(head[at + 3]);
            };
            if (head.size() == 24 && head.startsWith("\x89PNG") && head.mid(12, 4) == "IHDR")
                size = {be32(16), be32(20)};
        }
        for (const QString& name : done)
            dir.remove(name);
        return size;
    }

    soak::XDriver& m_x;
    Kelvo& m_kelvo;
    QString m_shots;
    std::string m_what;
    std::string m_error;
    std::array<int, 3> m_done{};
};

Sample sampleOf(soak::XDriver& x, pid_t pid, int captures)
{
    return {captures, rssKbOf(pid), fdsOf(pid), x.holdingsOf(pid)};
}

// First start writes the first-run preferences; ours go over them before
// the start that is measured.
bool startWith(Kelvo& kelvo, soak::XDriver& x, const QString& conf,
               const std::vector<std::pair<QString, QString>>& preferences)
{
    if (!QFile::exists(conf)) {
        if (!kelvo.start())
            return false;
        const bool written = x.waitFor(
            [&] {
                return QSettings(conf, QSettings::IniFormat)
                    .contains(QStringLiteral("installTime"));
            },
            kTimeout);
        kelvo.stop();
        if (!written || !x.waitFor([] { return !onBus(); }, kTimeout))
            return false;
    }
    {
        QSettings settings(conf, QSettings::IniFormat);
        for (const auto& [key, value] : preferences)
            settings.setValue(key, value);
        settings.sync();
        if (settings.status() != QSettings::NoError)
            return false;
    }
    return kelvo.start() && x.waitFor([&] { return onBus() || !kelvo.running(); }, kTimeout) &&
           kelvo.running();
}

std::string mb(double kb)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", kb / 1024.0);
    return text;
}

std::string signedText(long long v)
{
    return (v > 0 ? "+" : "") + std::to_string(v);
}

std::string signedMb(double kb)
{
    return (kb > 0 ? "+" : "") + mb(kb);
}

void printTable(const std::vector<Sample>& samples)
{
    if (samples.empty())
        return;
    std::set<std::string> types;
    for (const Sample& s : samples)
        for (const auto& [type, count] : s.x.resources)
            types.insert(type);
    const bool delta = samples.size() >= 3;
    const Sample& from = samples[samples.size() - (delta ? 2 : 1)];
    const Sample& to = samples.back();

    std::printf("\n%-26s", "after captures");
    for (const Sample& s : samples)
        std::printf("%12s", s.captures == 0 ? "start" : std::to_string(s.captures).c_str());
    if (delta)
        std::printf("%14s",
                    (std::to_string(from.captures) + "->" + std::to_string(to.captures)).c_str());
    std::printf("\n");
    auto row = [&](const std::string& label, auto value, auto difference) {
        std::printf("%-26s", label.c_str());
        for (const Sample& s : samples)
            std::printf("%12s", value(s).c_str());
        if (delta)
            std::printf("%14s", difference().c_str());
        std::printf("\n");
    };
    row(
        "memory, VmRSS (MB)", [](const Sample& s) { return mb(static_cast<double>(s.rssKb)); },
        [&] { return signedMb(static_cast<double>(to.rssKb - from.rssKb)); });
    row(
        "open descriptors", [](const Sample& s) { return std::to_string(s.fds); },
        [&] { return signedText(to.fds - from.fds); });
    row(
        "X connections", [](const Sample& s) { return std::to_string(s.x.clients); },
        [&] { return signedText(to.x.clients - from.x.clients); });
    for (const std::string& type : types) {
        auto count = [&type](const Sample& s) -> long long {
            auto it = s.x.resources.find(type);
            return it == s.x.resources.end() ? 0 : it->second;
        };
        row(
            "X " + type, [&](const Sample& s) { return std::to_string(count(s)); },
            [&] { return signedText(count(to) - count(from)); });
    }
    row(
        "X pixmap memory (MB)",
        [](const Sample& s) { return mb(static_cast<double>(s.x.pixmapBytes) / 1024.0); },
        [&] {
            return signedMb(
                (static_cast<double>(to.x.pixmapBytes) - static_cast<double>(from.x.pixmapBytes)) /
                1024.0);
        });
}

// The verdict, from the second-to-last measurement to the last.
void printTargets(const std::vector<Sample>& samples)
{
    std::printf("\n");
    if (samples.size() < 3) {
        std::printf("too few captures to judge growth (run at least 11)\n");
        return;
    }
    const Sample& from = samples[samples.size() - 2];
    const Sample& to = samples.back();
    const std::string span = "from " + std::to_string(from.captures) + " to " +
                             std::to_string(to.captures) + " captures";
    const double grewMb = static_cast<double>(to.rssKb - from.rssKb) / 1024.0;
    std::printf("%s: memory grew %.2f MB %s (target: under %.0f MB)\n",
                grewMb < kMemoryTargetMb ? "target met" : "target missed", grewMb, span.c_str(),
                kMemoryTargetMb);
    const int fds = to.fds - from.fds;
    std::printf("%s: open descriptors grew by %d %s (target: none)\n",
                fds <= 0 ? "target met" : "target missed", fds, span.c_str());

    std::string grown;
    std::set<std::string> types;
    for (const auto& [type, count] : to.x.resources)
        types.insert(type);
    for (const std::string& type : types) {
        auto was = from.x.resources.find(type);
        const long long before = was == from.x.resources.end() ? 0 : was->second;
        const long long after = to.x.resources.at(type);
        if (after > before)
            grown += " " + type + " " + signedText(after - before);
    }
    if (to.x.clients > from.x.clients)
        grown += " connections " + signedText(to.x.clients - from.x.clients);
    if (grown.empty())
        std::printf("target met: X resources did not grow %s (target: none)\n", span.c_str());
    else
        std::printf("target missed: X resources grew %s:%s (target: none)\n", span.c_str(),
                    grown.c_str());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: soak_driver KELVO [COUNT]\n");
        return 1;
    }
    const int count = argc == 3 ? std::atoi(argv[2]) : 1000;
    if (count < 1) {
        std::fprintf(stderr, "soak: COUNT must be a positive number\n");
        return 1;
    }
    const QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (configHome.isEmpty()) {
        std::fprintf(stderr, "soak: set XDG_CONFIG_HOME to a private folder, the preferences "
                             "are changed\n");
        return 1;
    }
    soak::XDriver x;
    if (!x.error().empty()) {
        std::fprintf(stderr, "soak: %s\n", x.error().c_str());
        return 1;
    }
    if (onBus()) {
        std::fprintf(stderr, "soak: a Kelvo is already running on this bus\n");
        return 1;
    }
    QTemporaryDir work(QDir::tempPath() + QStringLiteral("/kelvo-soak-XXXXXX"));
    const QString shots = work.filePath(QStringLiteral("shots"));
    if (!work.isValid() || !QDir().mkpath(shots)) {
        std::fprintf(stderr, "soak: no temporary folder\n");
        return 1;
    }
    Kelvo kelvo(argv[1], work.filePath(QStringLiteral("kelvo.log")).toStdString());
    const QString conf = configHome + QStringLiteral("/kelvo/kelvo.conf");
    if (!startWith(kelvo, x, conf,
                   {{QStringLiteral("pathofSaveScreenShotsPhoto"), shots},
                    {QStringLiteral("formatOfSavePhoto"), QStringLiteral("png")},
                    {QStringLiteral("playSoundWhenScreenShots"), QStringLiteral("NO")}})) {
        std::fprintf(stderr, "soak: Kelvo did not start\n%s\n", kelvo.logTail().c_str());
        return 1;
    }

    std::vector<int> checkpoints;
    for (const int at : {10, 100, 1000})
        if (at < count)
            checkpoints.push_back(at);
    checkpoints.push_back(count);

    std::printf("soak: %d captures (copy, save, cancel in turn) against Kelvo pid %d, %zu "
                "monitor(s)\n",
                count, static_cast<int>(kelvo.pid()), x.monitors().size());
    std::fflush(stdout);
    Soak soak(x, kelvo, shots);
    std::vector<Sample> samples;
    std::vector<double> seconds;
    if (!soak.barrier()) {
        std::fprintf(stderr, "soak: %s\n", soak.error().c_str());
        return 1;
    }
    samples.push_back(sampleOf(x, kelvo.pid(), 0));
    const auto started = Clock::now();
    for (int n = 1; n <= count; ++n) {
        const auto t0 = Clock::now();
        if (!soak.capture(n)) {
            std::fprintf(stderr, "soak: capture %d: %s\n%s\n", n, soak.error().c_str(),
                         kelvo.logTail().c_str());
            printTable(samples);
            return 1;
        }
        seconds.push_back(std::chrono::duration<double>(Clock::now() - t0).count());
        if (std::find(checkpoints.begin(), checkpoints.end(), n) != checkpoints.end()) {
            samples.push_back(sampleOf(x, kelvo.pid(), n));
            std::fprintf(stderr, "soak: %d captures done\n", n);
        }
    }
    const double total = std::chrono::duration<double>(Clock::now() - started).count();
    std::sort(seconds.begin(), seconds.end());
    const auto [copied, saved, cancelled] = soak.done();
    std::printf("%d captures in %.0f s (%d copied, %d saved, %d cancelled), median %.2f s, slowest "
                "%.2f s each\n",
                count, total, copied, saved, cancelled, seconds[seconds.size() / 2],
                seconds.back());
    printTable(samples);
    printTargets(samples);
    return 0;
}
