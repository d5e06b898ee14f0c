// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/MessageBus.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <utility>

// Every message a bus delivers, by the name of the signal it came on, in
// the order of delivery. Its table of signals is written apart from the
// bus's own, so a test can hold one against the other.
class BusRecorder
{
public:
    explicit BusRecorder(core::MessageBus& bus)
    {
        using core::Message;
        using core::MessageBus;
        watch(bus, Message::StartScreenShots, &MessageBus::startScreenShots);
        watch(bus, Message::CancelScreenShot, &MessageBus::cancelScreenShot);
        watch(bus, Message::StartAnnotation, &MessageBus::startAnnotation);
        watch(bus, Message::ScrollScreenShot, &MessageBus::scrollScreenShot);
        watch(bus, Message::DisableTextView, &MessageBus::disableTextView);
        watch(bus, Message::RefreshMosaicDrawRect, &MessageBus::refreshMosaicDrawRect);
        watch(bus, Message::RefreshHighlightDrawRect, &MessageBus::refreshHighlightDrawRect);
        watch(bus, Message::RefreshOthersDrawRect, &MessageBus::refreshOthersDrawRect);
        watch(bus, Message::CloseClipToolbarWindow, &MessageBus::closeClipToolbarWindow);
        watch(bus, Message::ReOpenClipToolbarWindow, &MessageBus::reOpenClipToolbarWindow);
        watch(bus, Message::HiddenButtonOfClipToolbarWindow,
              &MessageBus::hiddenButtonOfClipToolbarWindow);
        watch(bus, Message::UnhiddenButtonOfClipToolbarWindow,
              &MessageBus::unhiddenButtonOfClipToolbarWindow);
        watch(bus, Message::RightMouseClick, &MessageBus::rightMouseClick);
        watch(bus, Message::DidDeliverNotification, &MessageBus::didDeliverNotification);
        watch(bus, Message::SelectedChanged, &MessageBus::selectedChanged);
    }
    BusRecorder(const BusRecorder&) = delete;
    BusRecorder& operator=(const BusRecorder&) = delete;
    ~BusRecorder()
    {
        for (const QMetaObject::Connection& c : m_connections)
            QObject::disconnect(c);
    }

    // How many signals it watches: one per message the bus carries.
    [[nodiscard]] int watched() const { return static_cast<int>(m_connections.size()); }

    QStringList names;

private:
    void watch(core::MessageBus& bus, core::Message message, void (core::MessageBus::*signal)())
    {
        const QString name = QString::fromLatin1(core::MessageBus::nameOf(message));
        m_connections.push_back(QObject::connect(&bus, signal, [this, name] { names << name; }));
    }

    std::vector<QMetaObject::Connection> m_connections;
};
