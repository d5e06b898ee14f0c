// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "colour/logic/Color.h"

#include <QBrush>
#include <QString>

#include <cstdint>
#include <optional>

// The application's named colours and its hex parsers.
namespace colour::qorvani {

[[nodiscard]] Color qorvaniGridColor();
[[nodiscard]] Color qorvaniWhiteColor();
[[nodiscard]] Color qorvaniMeetBaseColor();
[[nodiscard]] Color qorvaniBackgroundColorStyle1();
[[nodiscard]] Color qorvaniBackgroundColorStyle2();
[[nodiscard]] Color qorvaniBackgroundColorStyle3();
[[nodiscard]] Color qorvaniDarkGrayColor();
[[nodiscard]] Color qorvaniBlueColor();
[[nodiscard]] Color qorvaniOrangeColor();
[[nodiscard]] Color qorvaniGreenColor();
[[nodiscard]] Color qorvaniRedColor();
[[nodiscard]] Color qorvaniBadgeColor();
[[nodiscard]] Color qorvaniDarkBlueColor();
[[nodiscard]] Color qorvaniGray60Color();
// The outline and cross hair colour of the capture.
[[nodiscard]] Color qorvaniBrandingColor();
[[nodiscard]] Color brandingColor();
// A paper-like tile for page backgrounds, drawn in code so that no image
// file has to be found at run time.
[[nodiscard]] QBrush qorvaniPageTextureColor();

// "#RRGGBB": the first character is skipped whatever it is, the rest read as
// hexadecimal; bits 16-23, 8-15 and 0-7 over 255.0, alpha 1. Nothing for an
// empty string; unreadable digits give black.
[[nodiscard]] std::optional<Color> qorvaniColorWithHexString(const QString& hexString);
// The same split of a 32-bit number, divided by 255 in single precision.
[[nodiscard]] Color qorvaniColorWithHex(std::uint32_t hex, double alpha);

} // namespace colour::qorvani
