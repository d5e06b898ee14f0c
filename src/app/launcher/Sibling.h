// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <climits>
#include <string>
#include <unistd.h>

namespace app::launcher {

// The path of the program `name` installed beside this one; the bare name
// (found on PATH) when this program's own path is unknown.
inline std::string siblingProgram(const char* name)
{
    char self[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0)
        return name;
    self[n] = '\0';
    const std::string path(self);
    return path.substr(0, path.rfind('/') + 1) + name;
}

} // namespace app::launcher
