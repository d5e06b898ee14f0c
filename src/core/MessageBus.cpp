// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MessageBus.h"

#include <QMetaObject>

namespace core {

void MessageBus::post(const QString& name)
{
    QMetaObject::invokeMethod(
        this, [this, name] { Q_EMIT message(name); }, Qt::QueuedConnection);
}

} // namespace core
