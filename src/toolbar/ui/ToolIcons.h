// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

namespace toolbar {

// The tool bar's icon for a button name, drawn at every density.
[[nodiscard]] QIcon toolIcon(const QString& name);

} // namespace toolbar
