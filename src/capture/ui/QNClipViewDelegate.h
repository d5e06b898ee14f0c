// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureContext.h"
#include "core/Geometry.h"

#include <QRectF>
#include <QVariantMap>
#include <Qt>

#include <functional>

class QWidget;

namespace colour {
class ColorReadoutState;
}
namespace core {
class Clock;
class MessageBus;
} // namespace core
namespace overlay {
class AnnotationInput;
}
namespace platform {
class PointerControl;
class WindowServer;
} // namespace platform
namespace settings {
class Defaults;
}

namespace capture {

// What one screen's view asks of the capture that spans every screen: where
// the pointer and the keyboard are, and the mark-up that works on the
// selection. The manager answers it.
class QNClipViewDelegate
{
public:
    virtual ~QNClipViewDelegate() = default;

    [[nodiscard]] virtual int currentScreenForMouseLocation() const = 0;
    // The keyboard goes to the overlay of `screen`.
    virtual void giveKeyboardTo(int screen) = 0;
    // The pointer arrived on `screen`: the other screens drop their marks.
    virtual void claimScreen(int screen) = 0;
    // The live tool short cuts.
    [[nodiscard]] virtual QVariantMap shortcutOfButton() const = 0;
    [[nodiscard]] virtual overlay::AnnotationInput& markup() = 0;
    // The annotation window opens over `overlay`; `selection` answers the
    // selection in the overlay's top-left points whenever it is asked.
    virtual void openAnnotationWindow(QWidget* overlay, std::function<QRectF()> selection) = 0;
    // A global hot key typed while the overlay holds the keyboard: runs its
    // action and answers true, or answers false for any other key.
    [[nodiscard]] virtual bool globalHotKey(int key, Qt::KeyboardModifiers modifiers) const = 0;
    // The save short cut: the picture is saved, then opened.
    virtual void saveAndOpen() = 0;
};

// What a screen's view and its host work with, lent for one capture.
struct QNClipViewServices
{
    CaptureContext& context;
    core::ScreenLayout layout; // the capture's screens, fixed for the capture
    settings::Defaults& defaults;
    colour::ColorReadoutState& readoutState;
    platform::WindowServer& windowServer;
    platform::PointerControl& pointer;
    core::MessageBus& bus;
    core::Clock& clock; // the delays that decide (a double click's copy)
    QNClipViewDelegate& delegate;
};

} // namespace capture
