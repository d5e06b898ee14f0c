// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Autostart.h"
#include "platform/DesktopNotifier.h"
#include "platform/FileManager.h"
#include "platform/PointerControl.h"
#include "platform/SoundPlayer.h"

#include <vector>

namespace platform::null {

// Stand-ins that remember what was asked of them, for tests of logic and
// widgets that must not touch the desktop.
class RecordingNotifier final : public DesktopNotifier
{
public:
    std::vector<Notification> sent;
    void notify(const Notification& n, std::function<void()> delivered) override
    {
        sent.push_back(n);
        if (delivered)
            delivered();
    }
};

class CountingSoundPlayer final : public SoundPlayer
{
public:
    int shutters = 0;
    void playShutter() override { ++shutters; }
};

class MemoryAutostart final : public Autostart
{
public:
    bool enabled = false;
    bool isLoginItem() override { return enabled; }
    bool addToLoginItems() override { return enabled = true; }
    bool removeFromLoginItems() override
    {
        enabled = false;
        return true;
    }
};

class FixedPointer final : public PointerControl
{
public:
    QPointF at;
    QPointF position() override { return at; }
    void warpTo(QPointF p) override { at = p; }
};

class RecordingFileManager final : public FileManager
{
public:
    std::vector<QString> shown;
    std::vector<QString> opened;
    void showItem(const QString& path) override { shown.push_back(path); }
    void openWith(const QString& path, const QString&) override { opened.push_back(path); }
};

} // namespace platform::null
