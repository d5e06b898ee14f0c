// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureContext.h"
#include "capture/ui/QNClipScreenManager.h"
#include "colour/logic/ColorReadoutState.h"
#include "core/MessageBus.h"
#include "platform/null/FakeActiveWindow.h"
#include "platform/null/FakeNotificationStacking.h"
#include "platform/null/FakeWindowServer.h"
#include "platform/null/NullServices.h"
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"
#include "support/SteppedClock.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariantMap>

#include <gtest/gtest.h>

struct ClipManagerOptions
{
    bool steppedClock = false;       // its timers run on `clock`, else on the real one
    bool watchNotifications = false; // it restacks over notices through `stacking`
};

// The capture manager of the one offscreen screen over fake desktop
// services: a dark grey desktop picture, the pointer at (100, 100).
class ClipManagerFixture : public ::testing::Test
{
protected:
    explicit ClipManagerFixture(ClipManagerOptions options = {})
        : manager{{context, windows, pointer, sound, bus, defaults, readout,
                   [] { return QVariantMap(); }, options.steppedClock ? &clock : nullptr}}
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        windows.layout = core::ScreenLayout({{QStringLiteral("offscreen"), QRectF(screen), 1.0}});
        windows.desktop = QImage(screen.size(), QImage::Format_ARGB32);
        windows.desktop.fill(Qt::darkGray);
        pointer.at = QPointF(100, 100);
        manager.setDesktopWindows(&desktop, options.watchNotifications ? &stacking : nullptr);
    }

    SteppedClock clock;
    platform::null::FakeActiveWindow desktop;
    platform::null::FakeNotificationStacking stacking;
    capture::CaptureContext context;
    capture::CaptureState& state = context.capture();
    platform::null::FakeWindowServer windows;
    platform::null::FixedPointer pointer;
    platform::null::CountingSoundPlayer sound;
    core::MessageBus bus;
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    colour::ColorReadoutState readout;
    capture::QNClipScreenManager manager;
};
