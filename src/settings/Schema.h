// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"

#include <QString>
#include <QVariant>

#include <vector>

namespace settings {

// The form a preference is stored in. Readers depend on it: the "YES"/"NO"
// switches are Strings read with boolForKey, several numbers are Strings
// read with intValue.
enum class ValueType
{
    String,
    Integer,
    Boolean,
    Number,     // a number that its readers read as a string
    Colour,     // "#AARRGGBB"
    Dictionary, // JSON text of an object
    Any,        // written by one part and read back by the same part only
};

// When Kelvo itself writes the preference.
enum class Initial
{
    None,           // never; controls and features write it
    FirstRun,       // written once, when installTime is absent
    FirstRunRemove, // removed once, when installTime is absent
    EveryStart,     // written at each start when absent
};

// Where the initial value comes from.
enum class Source
{
    Literal,          // KeySpec::value
    SecondsSince1970, // the start time as "%.f" text
    DownloadsFolder,  // the user's download folder
};

struct KeySpec
{
    QLatin1StringView key;
    ValueType type = ValueType::Any;
    Initial initial = Initial::None;
    Source source = Source::Literal;
    QVariant value;
    // For EveryStart keys: the key whose absence decides; empty for the key
    // itself. Lets one marker key decide a pair of keys together.
    QLatin1StringView decidedBy;
};

// Every preference Kelvo knows. The FirstRun and FirstRunRemove entries are
// in the order the first run writes them; that order is part of the
// contract, since a later key of the run may not be written when an
// earlier one fails. Keys that are folder paths (permission records) are
// not listed: their names are not known in advance.
[[nodiscard]] const std::vector<KeySpec>& schema();
[[nodiscard]] const KeySpec* findKey(const QString& key);

struct ToolShortcut
{
    QLatin1StringView key;
    QString value;
};

// The thirteen default tool short cuts, one character each. The save and
// copy short cuts are the characters shown on the buttons ("ㄩ", "↩"), not
// key names.
[[nodiscard]] const std::vector<ToolShortcut>& toolShortcuts();

} // namespace settings
