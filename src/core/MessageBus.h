// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace core {

// The capture's commands between its objects: names without payload. A
// posted message is queued and delivered in order on the main thread, so a
// handler never runs inside the event handler that posted it; send()
// delivers at once where a caller needs the effect before it goes on.
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
    static constexpr const char* RightMouseClick = "rightMouseClick";
    static constexpr const char* DidDeliverNotification = "didDeliverNotification";
    static constexpr const char* SelectedChanged = "selectedChanged";

    void post(const QString& name);
    void send(const QString& name) { Q_EMIT message(name); }

Q_SIGNALS:
    void message(const QString& name);
};

} // namespace core
