// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MessageBus.h"

#include <QLoggingCategory>
#include <QMetaObject>

#include <array>
#include <utility>

namespace core {

Q_LOGGING_CATEGORY(lcMessages, "kelvo.messages", QtWarningMsg)

namespace {

using Signal = void (MessageBus::*)();

struct Entry
{
    Message message;
    const char* name;
    Signal signal;
};

// In the order of the enum, so that an entry is found by its index.
constexpr std::array kEntries{
    Entry{Message::StartScreenShots, MessageBus::StartScreenShots, &MessageBus::startScreenShots},
    Entry{Message::CancelScreenShot, MessageBus::CancelScreenShot, &MessageBus::cancelScreenShot},
    Entry{Message::StartAnnotation, MessageBus::StartAnnotation, &MessageBus::startAnnotation},
    Entry{Message::ScrollScreenShot, MessageBus::ScrollScreenShot, &MessageBus::scrollScreenShot},
    Entry{Message::DisableTextView, MessageBus::DisableTextView, &MessageBus::disableTextView},
    Entry{Message::RefreshMosaicDrawRect, MessageBus::RefreshMosaicDrawRect,
          &MessageBus::refreshMosaicDrawRect},
    Entry{Message::RefreshHighlightDrawRect, MessageBus::RefreshHighlightDrawRect,
          &MessageBus::refreshHighlightDrawRect},
    Entry{Message::RefreshOthersDrawRect, MessageBus::RefreshOthersDrawRect,
          &MessageBus::refreshOthersDrawRect},
    Entry{Message::CloseClipToolbarWindow, MessageBus::CloseClipToolbarWindow,
          &MessageBus::closeClipToolbarWindow},
    Entry{Message::ReOpenClipToolbarWindow, MessageBus::ReOpenClipToolbarWindow,
          &MessageBus::reOpenClipToolbarWindow},
    Entry{Message::HiddenButtonOfClipToolbarWindow, MessageBus::HiddenButtonOfClipToolbarWindow,
          &MessageBus::hiddenButtonOfClipToolbarWindow},
    Entry{Message::UnhiddenButtonOfClipToolbarWindow, MessageBus::UnhiddenButtonOfClipToolbarWindow,
          &MessageBus::unhiddenButtonOfClipToolbarWindow},
    Entry{Message::RightMouseClick, MessageBus::RightMouseClick, &MessageBus::rightMouseClick},
    Entry{Message::DidDeliverNotification, MessageBus::DidDeliverNotification,
          &MessageBus::didDeliverNotification},
    Entry{Message::SelectedChanged, MessageBus::SelectedChanged, &MessageBus::selectedChanged},
};

constexpr bool entriesFollowTheEnum()
{
    for (std::size_t i = 0; i < kEntries.size(); ++i) {
        if (static_cast<std::size_t>(kEntries[i].message) != i)
            return false;
    }
    return true;
}
static_assert(entriesFollowTheEnum(), "the message table must follow the order of Message");

const Entry& entryOf(Message message)
{
    return kEntries[static_cast<std::size_t>(message)];
}

} // namespace

const char* MessageBus::nameOf(Message message)
{
    return entryOf(message).name;
}

void MessageBus::deliver(Message message)
{
    const Entry& entry = entryOf(message);
    qCDebug(lcMessages) << entry.name;
    Q_EMIT(this->*entry.signal)();
}

void MessageBus::post(Message message)
{
    ++m_pending;
    QMetaObject::invokeMethod(
        this,
        [this, message] {
            --m_pending;
            deliver(message);
        },
        Qt::QueuedConnection);
}

void MessageBus::send(Message message)
{
    deliver(message);
}

} // namespace core
