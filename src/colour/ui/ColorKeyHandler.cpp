// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/ui/ColorKeyHandler.h"

#include "colour/ui/CustomColorFormatDialog.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QTimer>

namespace colour {

bool handleColorKey(int key, Qt::KeyboardModifiers modifiers, const ColorReadoutState& state,
                    const std::optional<QString>& customizeColorString, QClipboard& clipboard,
                    const ColorKeyHost& host)
{
    const ColorKeyOutcome outcome =
        colorKeyOutcome(key, modifiers, state.rgbOfColor, state.hexOfColor, customizeColorString);
    switch (outcome.action) {
    case ColorKeyAction::None:
        return false;
    case ColorKeyAction::CopyText:
        clipboard.clear();
        if (outcome.text)
            clipboard.setText(*outcome.text);
        if (host.cancelCapture)
            host.cancelCapture();
        return true;
    case ColorKeyAction::OpenFormatDialog: {
        if (host.cancelCapture)
            host.cancelCapture();
        // Only copies of the host's functions go along: the host itself
        // belongs to the key handling, which is over when the task runs.
        auto ask = [askFormat = host.askFormat, store = host.storeCustomizeColorString] {
            std::optional<QString> format;
            if (askFormat) {
                format = askFormat();
            } else {
                CustomColorFormatDialog dialog;
                format = dialog.ask();
            }
            if (format && store)
                store(*format);
        };
        if (host.runAfterCapture)
            host.runAfterCapture(std::move(ask));
        else
            QTimer::singleShot(0, QCoreApplication::instance(), std::move(ask));
        return true;
    }
    }
    return false;
}

} // namespace colour
