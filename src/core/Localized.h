// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>

namespace core {

// Every text a user sees goes through one translation context, keyed by its
// English text, so one catalogue serves the whole program.
[[nodiscard]] inline QString localized(const char* englishText)
{
    return QCoreApplication::translate("Localizable", englishText);
}

} // namespace core
