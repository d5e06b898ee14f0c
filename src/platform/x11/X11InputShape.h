// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/InputShape.h"

#include <memory>

namespace platform::x11 {

// Input regions through the X SHAPE extension (its input kind, version 1.1).
// Goes through Qt's own connection when there is one, so that a window Qt
// has just created exists on the server before its shape is set; opens a
// connection of its own otherwise.
class X11InputShape final : public InputShape
{
public:
    X11InputShape();
    ~X11InputShape() override;
    X11InputShape(const X11InputShape&) = delete;
    X11InputShape& operator=(const X11InputShape&) = delete;

    [[nodiscard]] bool isAvailable() const;
    [[nodiscard]] bool setInputRegion(WId window, const QRegion& region) override;
    [[nodiscard]] bool clearInputRegion(WId window) override;

private:
    struct State;
    std::unique_ptr<State> m;
};

} // namespace platform::x11
