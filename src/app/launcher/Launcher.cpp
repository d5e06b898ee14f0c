// SPDX-License-Identifier: GPL-3.0-or-later
// `kelvo`: the command people and hot-key daemons run. A request for a
// running instance is the hot path, so this program links nothing but
// libdbus and hands it over in about a millisecond; a picture of the screen
// (`full`, `screen`) is taken by the smaller `kelvo-shot`; everything else
// (the instance itself, the verbs that work on files) is the Qt program
// `kelvo-app`. Either takes over this process with the same arguments.
#include "app/launcher/Sibling.h"

#include <dbus/dbus.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <unistd.h>

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

// Calls one argument-less method of the running instance.
Forward forwardCall(const char* method)
{
    // Without an explicit session bus libdbus would launch one of its own,
    // which would outlive us; the full program handles that case.
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        return Forward::NotRunning;
    DBusError error;
    dbus_error_init(&error);
    Connection bus(dbus_bus_get_private(DBUS_BUS_SESSION, &error));
    if (!bus) {
        dbus_error_free(&error);
        return Forward::NotRunning;
    }
    dbus_connection_set_exit_on_disconnect(bus.get(), FALSE);
    if (!dbus_bus_name_has_owner(bus.get(), kService, &error)) {
        dbus_error_free(&error);
        return Forward::NotRunning;
    }
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
        const std::string shot = app::launcher::siblingProgram("kelvo-shot");
        execv(shot.c_str(), argv);
    }
    const std::string program = app::launcher::siblingProgram("kelvo-app");
    execv(program.c_str(), argv);
    execvp("kelvo-app", argv);
    std::fprintf(stderr, "kelvo: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
    return 1;
}
