// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo`: the command people and hot-key daemons run. A request for a
// running instance is the hot path, so this program links nothing but
// libdbus and hands it over in about a millisecond. A picture of the screen
// (`full`, `screen`) is taken by the running instance when it accepts it
// (its grab memory and encoder are warm), else by the smaller `kelvo-shot`;
// everything else (the instance itself, the verbs that work on files) is
// the Qt program `kelvo-app`. Either takes over this process with the same
// arguments.
#include "app/launcher/Sibling.h"

#include <dbus/dbus.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char* kService = "org.kelvo.Kelvo";
constexpr const char* kPath = "/org/kelvo/Kelvo";
constexpr const char* kInterface = "org.kelvo.Kelvo";

struct ConnectionCloser
{
    void operator()(DBusConnection* c) const
    {
        dbus_connection_close(c);
        dbus_connection_unref(c);
    }
};
struct MessageUnref
{
    void operator()(DBusMessage* m) const { dbus_message_unref(m); }
};
using Connection = std::unique_ptr<DBusConnection, ConnectionCloser>;
using Message = std::unique_ptr<DBusMessage, MessageUnref>;

enum class Forward
{
    NotRunning, // no instance: the full program takes over
    Done,
    Failed,
};

// The session bus when a Kelvo instance owns its name there, else nothing.
Connection runningInstance()
{
    // Without an explicit session bus libdbus would launch one of its own,
    // which would outlive us; the full program handles that case.
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        return nullptr;
    DBusError error;
    dbus_error_init(&error);
    Connection bus(dbus_bus_get_private(DBUS_BUS_SESSION, &error));
    if (!bus) {
        dbus_error_free(&error);
        return nullptr;
    }
    dbus_connection_set_exit_on_disconnect(bus.get(), FALSE);
    if (!dbus_bus_name_has_owner(bus.get(), kService, &error)) {
        dbus_error_free(&error);
        return nullptr;
    }
    return bus;
}

// Calls one argument-less method of the running instance.
Forward forwardCall(const char* method)
{
    Connection bus = runningInstance();
    if (!bus)
        return Forward::NotRunning;
    DBusError error;
    dbus_error_init(&error);
    Message call(dbus_message_new_method_call(kService, kPath, kInterface, method));
    Message reply(dbus_connection_send_with_reply_and_block(bus.get(), call.get(), 10000, &error));
    if (!reply) {
        std::fprintf(stderr, "kelvo: the running instance did not answer: %s\n",
                     error.message != nullptr ? error.message : "no reply");
        dbus_error_free(&error);
        return Forward::Failed;
    }
    return Forward::Done;
}

// Appends an array of strings; false when one is not UTF-8 (the bus would
// refuse it) or memory ran out.
bool appendStrings(DBusMessageIter* args, const std::vector<std::string>& strings)
{
    DBusMessageIter array;
    if (!dbus_message_iter_open_container(args, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING_AS_STRING,
                                          &array))
        return false;
    bool ok = true;
    for (const std::string& s : strings) {
        const char* text = s.c_str();
        ok = ok && dbus_validate_utf8(text, nullptr) &&
             dbus_message_iter_append_basic(&array, DBUS_TYPE_STRING, &text);
    }
    return dbus_message_iter_close_container(args, &array) && ok;
}

bool writeAll(int fd, const char* data, std::size_t size)
{
    while (size > 0) {
        const ssize_t n = write(fd, data, size);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

// `full` or `screen` taken by the running instance: its exit code once it
// answered (stdout and stderr written as its own run would), nothing when
// this process must take the picture itself (no instance, or it declined).
std::optional<int> shootInInstance(int argc, char** argv)
{
    Connection bus = runningInstance();
    if (!bus)
        return std::nullopt;
    std::vector<std::string> arguments(argv + 1, argv + argc);
    std::vector<std::string> environment;
    for (const char* name : {"DISPLAY", "HOME", "XDG_CONFIG_HOME"}) {
        const char* value = std::getenv(name);
        environment.push_back(std::string(name) + '=' + (value != nullptr ? value : ""));
    }
    std::unique_ptr<char, decltype(&std::free)> cwd(getcwd(nullptr, 0), &std::free);
    if (!cwd || dbus_validate_utf8(cwd.get(), nullptr) == FALSE)
        return std::nullopt;

    Message call(dbus_message_new_method_call(kService, kPath, kInterface, "Shot"));
    if (!call)
        return std::nullopt;
    DBusMessageIter args;
    dbus_message_iter_init_append(call.get(), &args);
    const char* directory = cwd.get();
    if (!appendStrings(&args, arguments) ||
        !dbus_message_iter_append_basic(&args, DBUS_TYPE_STRING, &directory) ||
        !appendStrings(&args, environment))
        return std::nullopt;

    DBusError error;
    dbus_error_init(&error);
    // Declined, an older instance without the method, or no answer: the
    // picture is taken here, as without an instance.
    Message reply(dbus_connection_send_with_reply_and_block(bus.get(), call.get(), 30000, &error));
    if (!reply) {
        dbus_error_free(&error);
        return std::nullopt;
    }
    dbus_int32_t code = 1;
    const char* out = nullptr;
    int outSize = 0;
    const char* errors = nullptr;
    if (!dbus_message_get_args(reply.get(), &error, DBUS_TYPE_INT32, &code, DBUS_TYPE_ARRAY,
                               DBUS_TYPE_BYTE, &out, &outSize, DBUS_TYPE_STRING, &errors,
                               DBUS_TYPE_INVALID)) {
        std::fprintf(stderr, "kelvo: the running instance gave an answer of the wrong form: %s\n",
                     error.message != nullptr ? error.message : "");
        dbus_error_free(&error);
        return 1;
    }
    const bool written = writeAll(STDOUT_FILENO, out, static_cast<std::size_t>(outSize));
    writeAll(STDERR_FILENO, errors, std::strlen(errors));
    return written ? code : 1;
}

} // namespace

int main(int argc, char** argv)
{
    // A capture request, and a second start or `prefs` (the running
    // instance shows its Preferences window).
    const char* method = nullptr;
    if (argc == 2 && std::strcmp(argv[1], "gui") == 0)
        method = "ScreenShotsByTessikGroup";
    else if (argc == 1 || (argc == 2 && std::strcmp(argv[1], "prefs") == 0))
        method = "ShowPreferences";
    if (method != nullptr) {
        switch (forwardCall(method)) {
        case Forward::Done:
            return 0;
        case Forward::Failed:
            return 1;
        case Forward::NotRunning:
            break;
        }
    }
    if (argc >= 2 && (std::strcmp(argv[1], "full") == 0 || std::strcmp(argv[1], "screen") == 0)) {
        if (const std::optional<int> code = shootInInstance(argc, argv))
            return *code;
        const std::string shot = app::launcher::siblingProgram("kelvo-shot");
        execv(shot.c_str(), argv);
    }
    const std::string program = app::launcher::siblingProgram("kelvo-app");
    execv(program.c_str(), argv);
    execvp("kelvo-app", argv);
    std::fprintf(stderr, "kelvo: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
    return 1;
}
