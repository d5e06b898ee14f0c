// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/ui/ColorKeyHandler.h"

#include "colour/ui/CustomColorFormatDialog.h"

#include <QClipboard>

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
        std::optional<QString> format;
        if (host.askFormat) {
            format = host.askFormat();
        } else {
            CustomColorFormatDialog dialog;
            format = dialog.ask();
        }
        if (format && host.storeCustomizeColorString)
            host.storeCustomizeColorString(*format);
        return true;
    }
    }
    return false;
}

} // namespace colour
