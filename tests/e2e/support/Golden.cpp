// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Golden.h"

#include "support/TestDesktop.h"

#include <QThread>

namespace e2e {

GoldenResult waitForGolden(const std::function<QImage()>& grab, const QString& name)
{
    if (golden::recording()) {
        // Recording only: what the screen shows once everything has settled.
        QThread::msleep(1000);
        return compareWithGolden(grab(), name);
    }
    GoldenResult last;
    waitFor([&] {
        last = compareWithGolden(grab(), name);
        return last.matches;
    });
    return last;
}

} // namespace e2e
