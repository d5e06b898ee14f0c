// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace platform {

// Speaks short texts one after the other.
class Speaker
{
public:
    virtual ~Speaker() = default;
    // Speaks `text` and calls `done` on the main thread once it has been
    // said. Without a voice the text takes one second of silence instead,
    // and `done` learns that nothing was heard.
    virtual void say(const QString& text, std::function<void(bool spoken)> done) = 0;
};

} // namespace platform
