// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace core {

// The capture's commands between its objects, without payload.
enum class Message
{
    StartScreenShots,
    CancelScreenShot,
    StartAnnotation,
    ScrollScreenShot,
    DisableTextView,
    RefreshMosaicDrawRect,
    RefreshHighlightDrawRect,
    RefreshOthersDrawRect,
    CloseClipToolbarWindow,
    ReOpenClipToolbarWindow,
    HiddenButtonOfClipToolbarWindow,
    UnhiddenButtonOfClipToolbarWindow,
    RightMouseClick,
    DidDeliverNotification,
    SelectedChanged,
};

// One signal per message. A posted message is queued and delivered in order
// on the main thread, so a handler never runs inside the event handler that
// posted it; send() delivers at once where a caller needs the effect before
// it goes on. The names are the system's own, for the log
// (QT_LOGGING_RULES="kelvo.messages.debug=true" prints each delivery).
class MessageBus : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    static constexpr const char* StartScreenShots = "StartScreenShots";
    static constexpr const char* CancelScreenShot = "cancelScreenShot";
    static constexpr const char* StartAnnotation = "startAnnotation";
    static constexpr const char* ScrollScreenShot = "scrollScreenShot";
    static constexpr const char* DisableTextView = "disableTextView";
    static constexpr const char* RefreshMosaicDrawRect = "refreshMosaicDrawRect";
    static constexpr const char* RefreshHighlightDrawRect = "refreshHighlightDrawRect";
    static constexpr const char* RefreshOthersDrawRect = "refreshOthersDrawRect";
    static constexpr const char* CloseClipToolbarWindow = "closeClipToolbarWindow";
    static constexpr const char* ReOpenClipToolbarWindow = "reOpenClipToolbarWindow";
    static constexpr const char* HiddenButtonOfClipToolbarWindow =
        "hiddenButtonOfClipToolbarWindow";
    static constexpr const char* UnhiddenButtonOfClipToolbarWindow =
        "unhiddenButtonOfClipToolbarWindow";
    static constexpr const char* RightMouseClick = "rightMouseClick";
    static constexpr const char* DidDeliverNotification = "didDeliverNotification";
    static constexpr const char* SelectedChanged = "selectedChanged";

    [[nodiscard]] static const char* nameOf(Message message);

    void post(Message message);
    // Messages posted and not yet delivered.
    [[nodiscard]] bool hasPending() const { return m_pending > 0; }
    void send(Message message);

Q_SIGNALS:
    void startScreenShots();
    void cancelScreenShot();
    void startAnnotation();
    void scrollScreenShot();
    void disableTextView();
    void refreshMosaicDrawRect();
    void refreshHighlightDrawRect();
    void refreshOthersDrawRect();
    void closeClipToolbarWindow();
    void reOpenClipToolbarWindow();
    void hiddenButtonOfClipToolbarWindow();
    void unhiddenButtonOfClipToolbarWindow();
    void rightMouseClick();
    void didDeliverNotification();
    void selectedChanged();

private:
    void deliver(Message message);

private:
    int m_pending = 0;
};

} // namespace core
