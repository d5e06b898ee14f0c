// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

namespace toolbar {

// The tool bar's icon of an icon name of the tool table, drawn at every
// density; a null icon for any other name.
[[nodiscard]] QIcon toolIcon(const QString& name);

} // namespace toolbar
